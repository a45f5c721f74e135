#include "CurrentDeskModel.h"

namespace ostrel {

namespace {
// Read and written on the main thread only, like every other piece of store state.
QString& currentName() {
    static QString name = QStringLiteral("D5");
    return name;
}
} // namespace

QString CurrentDeskModel::name() {
    return currentName();
}

void CurrentDeskModel::setName(const QString& name) {
    currentName() = name;
}

} // namespace ostrel

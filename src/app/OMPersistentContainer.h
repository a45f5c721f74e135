#pragma once

#include <QString>

namespace ostrel {

// The application's object store. Nothing is ever stored in it, so quitting always finds it
// clean; it exists so the quit flow keeps its save-before-quit shape should data ever arrive.
class OMPersistentContainer {
public:
    explicit OMPersistentContainer(QString name = QStringLiteral("OstrelMotion"))
        : m_name(std::move(name)) {}
    virtual ~OMPersistentContainer() = default;

    const QString& name() const { return m_name; }
    virtual bool commitEditing() { return true; }
    virtual bool hasChanges() const { return false; }
    // False with `error` filled in when the save failed.
    virtual bool save(QString& error) {
        (void)error;
        return true;
    }

private:
    QString m_name;
};

} // namespace ostrel

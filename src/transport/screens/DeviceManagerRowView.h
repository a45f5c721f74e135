#pragma once

#include "transport/screens/ClickableRow.h"

#include <QVariantMap>

class QLabel;

namespace ostrel {

// One desk in the device list: its name (and the advertised name under it when the user named
// the desk), whether it is in range, and an arrow on bound desks, whose details it opens.
class DeviceManagerRowView : public ClickableRow {
    Q_OBJECT
public:
    static constexpr char kIdentifier[] = "DeviceManagerCellId";

    DeviceManagerRowView(const QVariantMap& record, bool paired, QWidget* parent = nullptr);

    const QVariantMap& record() const { return m_record; }
    QString title() const;
    bool isOnLine() const;
    // "Connected", "Online" or "Offline" as shown.
    QString markText() const;

private:
    QVariantMap m_record;
    QLabel* m_title;
    QLabel* m_mark;
};

} // namespace ostrel

#include "transport/screens/DeviceManagerRowView.h"

#include "transport/screens/DeviceManagement.h"
#include "transport/screens/ScreenPicture.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr int kRowHeight = 56;
constexpr QSize kIconSize(24, 24);
constexpr QSize kArrowSize(12, 12);

QString field(const QVariantMap& record, const char* key) {
    return record.value(QString::fromLatin1(key)).toString();
}

} // namespace

DeviceManagerRowView::DeviceManagerRowView(const QVariantMap& record, bool paired, QWidget* parent)
    : ClickableRow(kRowHeight, parent), m_record(record),
      m_title(new QLabel(field(record, "deviceName"))), m_mark(new QLabel) {
    setObjectName(QString::fromLatin1(kIdentifier));
    const QString bluetoothName = field(record, "bluetoothName");
    if (m_title->text().isEmpty())
        m_title->setText(bluetoothName);

    auto* names = new QVBoxLayout;
    names->setSpacing(0);
    names->addStretch();
    names->addWidget(m_title);
    if (m_title->text() != bluetoothName) {
        auto* advertised = new QLabel(bluetoothName);
        advertised->setStyleSheet(QStringLiteral("color: #8a8f98;"));
        names->addWidget(advertised);
    }
    names->addStretch();

    // The connected desk wears a filled badge: a colour alone would tell it from Online only
    // to some eyes.
    if (DeviceManagement::isCurrentDesk(bluetoothName)) {
        m_mark->setText(tr("Connected"));
        m_mark->setStyleSheet(QStringLiteral("color: white; background: #2F80ED; font-weight: bold;"
                                             "border-radius: 9px; padding: 2px 8px;"));
    } else {
        m_mark->setText(isOnLine() ? tr("Online") : tr("Offline"));
        m_mark->setStyleSheet(isOnLine() ? QStringLiteral("color: #2e9d5b;")
                                         : QStringLiteral("color: #8a8f98;"));
    }

    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(16, 0, 16, 0);
    layout->setSpacing(12);
    layout->addWidget(screenPicture(QStringLiteral("connect_bluetoothicon"), kIconSize));
    layout->addLayout(names, 1);
    layout->addWidget(m_mark, 0, Qt::AlignVCenter);
    if (paired)
        layout->addWidget(screenPicture(QStringLiteral("connect_arrow"), kArrowSize));
}

QString DeviceManagerRowView::title() const {
    return m_title->text();
}

bool DeviceManagerRowView::isOnLine() const {
    return field(m_record, DeviceManagement::kOnLineKey) == u"1";
}

QString DeviceManagerRowView::markText() const {
    return m_mark->text();
}

} // namespace ostrel

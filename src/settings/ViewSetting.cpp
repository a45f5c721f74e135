#include "settings/ViewSetting.h"

#include "settings/SettingRowView.h"
#include "settings/SettingsPages.h"
#include "settings/ViewSystemSetting.h"
#include "store/CurrentDeskModel.h"
#include "widgets/OMImage.h"

#include <QLabel>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr QSize kDeskPictureSize{200, 120};

} // namespace

ViewSetting::ViewSetting(DeskControlVC* fatherVC)
    : OMSettingPage(fatherVC, tr("My Standing Desk")) {
    contentLayout()->addWidget(buildHeader());
    buildRows();
    contentLayout()->addStretch();
}

QString ViewSetting::deskImageName(const QString& foldName) {
    static const QStringList kPictured = {QStringLiteral("D5Plus"), QStringLiteral("D5Q"),
                                          QStringLiteral("D5L"), QStringLiteral("D5Pro")};
    return QStringLiteral("connect_desk_") +
           (kPictured.contains(foldName) ? foldName : QStringLiteral("D5"));
}

QWidget* ViewSetting::buildHeader() {
    auto* header = new QWidget(this);
    auto* picture = new QLabel(header);
    picture->setObjectName(QStringLiteral("deskPicture"));
    picture->setPixmap(
        OMImage::pixmap(deskImageName(CurrentDeskModel::name()))
            .scaled(kDeskPictureSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    picture->setAlignment(Qt::AlignCenter);
    auto* brand = new QLabel(tr("Kelvra Standing Desk"), header);
    QFont brandFont = brand->font();
    brandFont.setBold(true);
    brand->setFont(brandFont);
    auto* motto = new QLabel(tr("New working, New Living"), header);
    motto->setEnabled(false);

    auto* layout = new QVBoxLayout(header);
    layout->setContentsMargins(0, 0, 0, 12);
    layout->addWidget(picture);
    for (QLabel* line : {brand, motto}) {
        line->setAlignment(Qt::AlignCenter);
        layout->addWidget(line);
    }
    return header;
}

void ViewSetting::buildRows() {
    struct Row {
        const char* icon;
        QString text;
        void (ViewSetting::*action)();
    };
    const Row rows[kRowCount] = {
        {"setting_sitstandicon", tr("Sit-stand alternation"), &ViewSetting::actionPushToSitStand},
        {"setting_deviceicon", tr("Device"), &ViewSetting::actionPushToDevice},
        {"setting_syssetttingicon", tr("System settings"), &ViewSetting::actionPushToSysSetting},
    };
    for (int i = 0; i < kRowCount; ++i) {
        const Row& entry = rows[i];
        auto* row = new SettingRowView(QString::fromLatin1(entry.icon), entry.text, this);
        row->setFixedHeight(kRowHeight);
        row->setAccessoryImage(QStringLiteral("setting_arrow"));
        connect(row, &QAbstractButton::clicked, this, entry.action);
        m_rows[std::size_t(i)] = row;
        contentLayout()->addWidget(row);
    }
}

void ViewSetting::actionPushToSitStand() {
    push(SettingsPages::instance().create(SettingsPages::Page::SitStand, fatherVC()));
}

void ViewSetting::actionPushToDevice() {
    push(SettingsPages::instance().create(SettingsPages::Page::Device, fatherVC()));
}

void ViewSetting::actionPushToSysSetting() {
    push(new ViewSystemSetting(fatherVC()));
}

} // namespace ostrel

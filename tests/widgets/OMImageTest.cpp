#include "widgets/OMImage.h"

#include <QImage>
#include <gtest/gtest.h>

using ostrel::OMImage;

namespace {

// The names the screens ask for; the desk control screen builds the layer names from the model.
QStringList namesTheScreensUse() {
    QStringList names =
        QStringLiteral("connect_refresh connect_bluetoothicon connect_arrow color_desk "
                       "color_open color_close control_set control_set_normal "
                       "control_shortcuts_tip common_toolbarlogo home_error_logo "
                       "setting_sitstandicon setting_deviceicon setting_syssetttingicon "
                       "setting_arrow setting_select setting_switchopen setting_switchclose "
                       "setting_up setting_down setting_sit setting_stand setting_M1 setting_M2")
            .split(' ');
    for (const QString preset : {"sit", "stand", "M1", "M2"})
        names << "control_" + preset + "_set"
              << "control_" + preset + "_unset";
    for (const QString model : {"D5Plus", "D5Q", "D5L", "D5Pro", "D5"})
        names << "connect_desk_" + model << "control_" + model + "_desktop"
              << "control_" + model + "_deskmid"
              << "control_" + model + "_deskbottom";
    return names;
}

bool hasInk(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 0)
                return true;
    return false;
}

TEST(OMImage, EveryNameTheScreensUseIsAValidSvgThatDrawsSomething) {
    const QStringList available = OMImage::names();
    for (const QString& name : namesTheScreensUse())
        EXPECT_TRUE(available.contains(name)) << name.toStdString();
    for (const QString& name : available) {
        SCOPED_TRACE(name.toStdString());
        const QSizeF size = OMImage::naturalSize(name);
        ASSERT_FALSE(size.isEmpty());
        const QPixmap pixmap = OMImage::pixmap(name, 1.0, 2.0);
        EXPECT_EQ(pixmap.size(), (size * 2).toSize());
        EXPECT_TRUE(hasInk(pixmap.toImage()));
        EXPECT_FALSE(OMImage::icon(name).isNull());
    }
}

QStringList warnings;

TEST(OMImage, AMissingNameWarnsOnceAndGivesNothing) {
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(
        [](QtMsgType type, const QMessageLogContext&, const QString& message) {
            if (type == QtWarningMsg)
                warnings << message;
        });
    const bool nullIcon = OMImage::icon("connect_nothing").isNull();
    const bool nullPixmap = OMImage::pixmap("connect_nothing").isNull();
    qInstallMessageHandler(previous);

    EXPECT_TRUE(nullIcon);
    EXPECT_TRUE(nullPixmap);
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.first().contains("connect_nothing"));
}

} // namespace

#include "widgets/OMImage.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

using ostrel::OMImage;

namespace {

// The names the screens ask for; the desk control screen builds the layer names from the model.
QStringList namesTheScreensUse() {
    QStringList names = {
        "connect_refresh",
        "connect_bluetoothicon",
        "connect_arrow",
        "color_desk",
        "color_open",
        "color_close",
        "control_set",
        "control_set_normal",
        "control_shortcuts_tip",
        "common_toolbarlogo",
        "home_error_logo",
        "setting_sitstandicon",
        "setting_deviceicon",
        "setting_syssetttingicon",
        "setting_arrow",
        "setting_select",
        "setting_switchopen",
        "setting_switchclose",
        "setting_up",
        "setting_down",
        "setting_sit",
        "setting_stand",
        "setting_M1",
        "setting_M2",
    };
    for (const QString preset : {"sit", "stand", "M1", "M2"})
        names << "control_" + preset + "_set"
              << "control_" + preset + "_unset";
    for (const QString model : {"D5Plus", "D5Q", "D5L", "D5Pro", "D5"}) {
        names << "connect_desk_" + model;
        for (const QString layer : {"desktop", "deskmid", "deskbottom"})
            names << "control_" + model + "_" + layer;
    }
    return names;
}

bool hasInk(const QImage& image) {
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 0)
                return true;
    return false;
}

TEST(OMImage, EveryNameTheScreensUseIsInTheResource) {
    const QStringList available = OMImage::names();
    for (const QString& name : namesTheScreensUse())
        EXPECT_TRUE(available.contains(name)) << name.toStdString();
}

TEST(OMImage, EveryPictureIsAValidSvgThatDrawsSomething) {
    const QStringList names = OMImage::names();
    ASSERT_GE(names.size(), namesTheScreensUse().size());
    for (const QString& name : names) {
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
void collect(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtWarningMsg)
        warnings << message;
}

TEST(OMImage, AMissingNameWarnsOnceAndDrawsNothing) {
    warnings.clear();
    const QtMessageHandler previous = qInstallMessageHandler(collect);
    const QIcon icon = OMImage::icon("connect_nothing");
    const QPixmap pixmap = OMImage::pixmap("connect_nothing");
    QImage canvas(8, 8, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    OMImage::render(painter, "connect_nothing", canvas.rect());
    painter.end();
    qInstallMessageHandler(previous);

    EXPECT_TRUE(icon.isNull());
    EXPECT_TRUE(pixmap.isNull());
    EXPECT_FALSE(hasInk(canvas));
    EXPECT_FALSE(OMImage::exists("connect_nothing"));
    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings.first().contains("connect_nothing"));
}

} // namespace

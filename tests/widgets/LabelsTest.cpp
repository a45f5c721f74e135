#include "widgets/OMVerticalCenterLabel.h"

#include <QImage>
#include <gtest/gtest.h>

using ostrel::OMVerticalCenterLabel;

// Rows (top, bottom) that hold any dark pixel of the drawn text.
static std::pair<int, int> inkRows(OMVerticalCenterLabel& label) {
    QImage image(label.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    label.render(&image, {}, {}, QWidget::DrawChildren);
    int top = -1, bottom = -1;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 128) {
                top = top < 0 ? y : top;
                bottom = y;
            }
    return {top, bottom};
}

TEST(OMVerticalCenterLabel, TextSitsInTheMiddleOfATallLabel) {
    OMVerticalCenterLabel label("Desk");
    label.resize(200, 120);
    const auto [top, bottom] = inkRows(label);
    ASSERT_GE(top, 0);
    const int above = top;
    const int below = label.height() - 1 - bottom;
    EXPECT_LE(std::abs(above - below), label.fontMetrics().height() / 2);
}

TEST(OMVerticalCenterLabel, LongTextIsElidedAndShownWholeInTheToolTip) {
    const QString name = "QWJ-0042 meeting room standing desk by the window";
    OMVerticalCenterLabel label(name);
    label.show(); // hidden widgets get their resize events only when shown
    label.resize(label.sizeHint());
    EXPECT_EQ(label.shownText(), name);
    EXPECT_TRUE(label.toolTip().isEmpty());

    label.resize(label.sizeHint().width() / 3, label.sizeHint().height());
    EXPECT_TRUE(label.shownText().endsWith(QChar(0x2026)));
    EXPECT_EQ(label.toolTip(), name);

    label.setText("D5");
    EXPECT_EQ(label.shownText(), "D5");
    EXPECT_TRUE(label.toolTip().isEmpty());
}

#include "widgets/OMVerticalCenterLabel.h"

#include <gtest/gtest.h>

TEST(OMVerticalCenterLabel, LongTextIsElidedAndShownWholeInTheToolTip) {
    const QString name = "QWJ-0042 meeting room standing desk by the window";
    ostrel::OMVerticalCenterLabel label(name);
    label.show(); // hidden widgets get their resize events only when shown
    const QSize fits = label.sizeHint();
    label.resize(fits);
    EXPECT_EQ(label.shownText(), name);
    EXPECT_TRUE(label.toolTip().isEmpty());

    label.resize(fits.width() / 3, fits.height());
    EXPECT_TRUE(label.shownText().endsWith(QChar(0x2026)));
    EXPECT_EQ(label.toolTip(), name);

    label.setText("D5");
    EXPECT_EQ(label.shownText(), "D5");
    EXPECT_TRUE(label.toolTip().isEmpty());
}

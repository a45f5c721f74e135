#pragma once

#include "settings/OMSettingPage.h"
#include "store/Object_LightColor.h"

#include <QVariantMap>
#include <array>

class QFrame;
class QLabel;
class QPushButton;

namespace ostrel {

class ColorWellView;

// The desk's light strip: on or off, one of the desk's eight effects, or a colour picked from
// the well. Every change goes to the desk at once. The desk owns the state; the page starts from
// its last report and follows the desk switching the strip on or off.
class ColorManageView : public OMSettingPage {
    Q_OBJECT
public:
    static constexpr int kSchemeCount = 8;
    static constexpr int kFirstSchemeTag = 1001;
    static constexpr int kCustomMode = 9;

    ColorManageView(DeskControlVC* fatherVC, const Object_LightColor& lightColor);
    ~ColorManageView() override;

    const Object_LightColor& lightColor() const { return m_light; }
    QPushButton* onButton() const { return m_on; }
    QPushButton* offButton() const { return m_off; }
    // Effect 1..8.
    QPushButton* schemeButton(int mode) const { return m_schemes[std::size_t(mode - 1)]; }
    ColorWellView* colorWell() const { return m_well; }
    QString statusImageName() const { return m_statusImageName; }
    QColor swatchColor() const { return m_swatchColor; }

    void actionLightOpen();
    void actionLightClose();
    void actionSchemeColorSelect(int tag);
    void changeColorWithMode(int mode, const QColor& color);
    // A report from the desk; the page changes only when it differs.
    void refreshContentLightStatus(const QVariantMap& reported);

    // A colour component (0..1) as the desk's 0..255, truncated: 0.999 gives 254.
    static int channel(float component);

private:
    QWidget* buildSwitch();
    QWidget* buildSchemes();
    QWidget* buildWell();
    void actionPushColorToDeskWithMode(int mode, int red, int green, int blue);
    void refreshContentView();
    void refreshBackgroundColor();

    Object_LightColor m_light;
    QLabel* m_status = nullptr;
    QString m_statusImageName;
    QPushButton* m_on = nullptr;
    QPushButton* m_off = nullptr;
    std::array<QPushButton*, kSchemeCount> m_schemes{};
    ColorWellView* m_well = nullptr;
    QFrame* m_swatch = nullptr;
    QColor m_swatchColor;
};

} // namespace ostrel

#pragma once

#include "settings/OMSettingPage.h"

namespace ostrel {

// A page of help text under a title, with a way back.
class SettingHelpPage : public OMSettingPage {
    Q_OBJECT
public:
    QString text() const;

protected:
    SettingHelpPage(DeskControlVC* fatherVC, const QString& title, const QString& text);

private:
    QString m_text;
};

} // namespace ostrel

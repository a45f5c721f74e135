#pragma once

#include <QPointer>
#include <QWidget>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace ostrel {

class DeskControlVC;
class OMPageHeader;

// A page on the control screen's view stack: a title, a way back, and the page's content below.
// The page reaches the desk session only through the control screen it was opened from.
class OMSettingPage : public QWidget {
    Q_OBJECT
public:
    DeskControlVC* fatherVC() const;
    QString title() const;
    QPushButton* backButton() const;

    // Closes this page; the one below shows again.
    void actionBack();

protected:
    OMSettingPage(DeskControlVC* fatherVC, const QString& title);

    QVBoxLayout* contentLayout() const { return m_content; }
    // Opens `page` on top of this one.
    void push(QWidget* page) const;
    // A section heading inside the page, and one for a section built apart.
    QLabel* addHeading(const QString& text);
    static QLabel* headingLabel(const QString& text, QWidget* parent);

private:
    QPointer<DeskControlVC> m_fatherVC;
    OMPageHeader* m_header;
    QVBoxLayout* m_content;
};

} // namespace ostrel

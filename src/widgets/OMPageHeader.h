#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QVBoxLayout;

namespace ostrel {

// The top of a page opened over another: the page's title centred, and a way back at its left
// end (also the platform's Back key, and Escape). Both texts come translated from the page.
class OMPageHeader : public QWidget {
    Q_OBJECT
public:
    OMPageHeader(const QString& title, const QString& backText, QWidget* parent = nullptr);

    QString title() const;
    QPushButton* backButton() const { return m_back; }
    // Lays `page` out as every page is: this header on top, then the returned layout, which
    // the page fills with its content.
    QVBoxLayout* layOutPage(QWidget* page);

signals:
    void backClicked();

private:
    QLabel* m_title;
    QPushButton* m_back;
};

} // namespace ostrel

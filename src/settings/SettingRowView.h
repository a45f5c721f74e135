#pragma once

#include <QAbstractButton>

class QLabel;

namespace ostrel {

// A settings row that is clicked, never selected: an optional icon, the row's text, an optional
// value and an optional picture at the end (the arrow of a row that opens a page, the tick of a
// chosen option).
class SettingRowView : public QAbstractButton {
    Q_OBJECT
public:
    SettingRowView(const QString& iconName, const QString& text, QWidget* parent = nullptr);

    QString valueText() const;
    void setValueText(const QString& text);
    QString accessoryImage() const { return m_accessoryName; }
    // An empty name shows nothing there.
    void setAccessoryImage(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QLabel* m_value;
    QLabel* m_accessory;
    QString m_accessoryName;
};

} // namespace ostrel

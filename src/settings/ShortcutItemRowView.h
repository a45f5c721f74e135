#pragma once

#include <QWidget>

class QLabel;

namespace ostrel {

// One shortcut as the user types it: the key's picture, what it does, and the keys.
class ShortcutItemRowView : public QWidget {
    Q_OBJECT
public:
    explicit ShortcutItemRowView(QWidget* parent = nullptr);

    void setViewContentWithImageName(const QString& imageName, const QString& title,
                                     const QString& content);
    QString title() const;
    QString content() const;

private:
    QLabel* m_image;
    QLabel* m_title;
    QLabel* m_content;
};

} // namespace ostrel

#include "settings/ShortcutItemRowView.h"

#include "widgets/OMImage.h"

#include <QHBoxLayout>
#include <QLabel>

namespace ostrel {

namespace {

constexpr int kImageSize = 28;

} // namespace

ShortcutItemRowView::ShortcutItemRowView(QWidget* parent)
    : QWidget(parent), m_image(new QLabel(this)), m_title(new QLabel(this)),
      m_content(new QLabel(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 4, 12, 4);
    row->setSpacing(12);
    m_image->setFixedSize(kImageSize, kImageSize);
    row->addWidget(m_image);
    row->addWidget(m_title, 1);
    row->addWidget(m_content);
}

void ShortcutItemRowView::setViewContentWithImageName(const QString& imageName,
                                                      const QString& title,
                                                      const QString& content) {
    m_image->setPixmap(OMImage::pixmap(imageName).scaled(
        kImageSize, kImageSize, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    m_title->setText(title);
    m_content->setText(content);
}

QString ShortcutItemRowView::title() const {
    return m_title->text();
}

QString ShortcutItemRowView::content() const {
    return m_content->text();
}

} // namespace ostrel

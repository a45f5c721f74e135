#include "transport/screens/ScreenPicture.h"

#include "widgets/OMImageButton.h"

namespace ostrel {

QWidget* screenPicture(const QString& name, const QSize& size) {
    auto* picture = new OMImageButton(name);
    picture->setFixedSize(size);
    picture->setFocusPolicy(Qt::NoFocus);
    picture->setAttribute(Qt::WA_TransparentForMouseEvents);
    return picture;
}

} // namespace ostrel

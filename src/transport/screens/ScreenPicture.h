#pragma once

#include <QSize>
#include <QString>

class QWidget;

namespace ostrel {

// A picture that only shows: drawn from its SVG at paint time, so it stays sharp at any pixel
// ratio; it takes neither focus nor clicks (a click goes to what lies beneath).
QWidget* screenPicture(const QString& name, const QSize& size);

} // namespace ostrel

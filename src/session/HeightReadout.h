#pragma once

#include <QObject>
#include <QString>

namespace ostrel {

// The desk's height as the session shows it: the text in the display unit, announced only when
// it changes, and the desk picture's stage offsets within the desk's limits. Any change of
// height restarts the sit-stand countdown before anyone hears of the new height. Apart from
// the session, which wires the desk's parts together and only hands heights on.
class HeightReadout : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // A height in tenths of a centimetre, as text: the desk's own report or a redraw.
    void show(const QString& height, int minHeight, int maxHeight);
    // The desk's own report. A desk at rest repeats its height with every display frame: only a
    // change is drawn again.
    void showReport(int height, int minHeight, int maxHeight);
    // Tenths of a centimetre last shown; 0 before any.
    double shownTenths() const { return m_shownTenths; }
    // For a new desk: its first height is drawn whatever it is.
    void forget();

signals:
    void heightShown(const QString& text);
    void deskOffsetsChanged(float top, float middle);

private:
    double m_shownTenths = 0; // normalised to centimetres
    QString m_shownText;
    int m_shownReport = 0; // the report drawn last; 0 when anything else was drawn since
};

} // namespace ostrel

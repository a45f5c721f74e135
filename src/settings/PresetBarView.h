#pragma once

#include <QWidget>

namespace ostrel {

// A preset's place between the desk's lowest and highest position, as a filled bar.
class PresetBarView : public QWidget {
    Q_OBJECT
public:
    explicit PresetBarView(QWidget* parent = nullptr);

    double fraction() const { return m_fraction; }
    // 0 draws an empty bar; values outside 0..1 are held to the ends.
    void setFraction(double fraction);

    QSize sizeHint() const override { return {200, 8}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double m_fraction = 0.0;
};

} // namespace ostrel

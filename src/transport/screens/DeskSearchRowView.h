#pragma once

#include "transport/screens/ClickableRow.h"

class QLabel;

namespace ostrel {

class OMRotatingImage;
class OMVerticalCenterLabel;

// One desk in the search list: the Bluetooth picture, the desk's name and, while the desk is
// being paired, "Pairing" with a spinning indicator. Rows are clicked, never selected.
class DeskSearchRowView : public ClickableRow {
    Q_OBJECT
public:
    static constexpr char kIdentifier[] = "DeskSearchIdentifier";

    explicit DeskSearchRowView(QWidget* parent = nullptr);

    void setRowContentWithTitle(const QString& title);
    QString title() const;
    void showConnect();
    void hiddenConnect();
    bool isConnectShown() const;

private:
    OMVerticalCenterLabel* m_labelDeskName;
    QLabel* m_labelPairing;
    OMRotatingImage* m_indicator;
};

} // namespace ostrel

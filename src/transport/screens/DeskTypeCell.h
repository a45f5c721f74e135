#pragma once

#include "transport/screens/ClickableRow.h"

namespace ostrel {

// One desk model on the desk type screen: its picture, its name and an arrow.
class DeskTypeCell : public ClickableRow {
    Q_OBJECT
public:
    static constexpr char kIdentifier[] = "DeskTypeIdentifier";

    explicit DeskTypeCell(int index, QWidget* parent = nullptr);

    QString label() const { return m_label; }

private:
    QString m_label;
};

} // namespace ostrel

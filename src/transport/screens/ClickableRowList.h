#pragma once

#include <QScrollArea>

class QVBoxLayout;

namespace ostrel {

class ClickableRow;

// A borderless vertical list of rows kept at the top, scrolling when they outgrow it.
class ClickableRowList : public QScrollArea {
    Q_OBJECT
public:
    explicit ClickableRowList(QWidget* parent = nullptr);

    // Takes ownership and shows the row below the others.
    void addRow(ClickableRow* row);
    // The same for a section heading between rows.
    void addHeading(QWidget* heading);

private:
    QVBoxLayout* m_rows;
};

} // namespace ostrel

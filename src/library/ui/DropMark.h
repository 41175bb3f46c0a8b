#pragma once

class QPainter;
class QTableView;

/// Shows where in a table what hovers over it would land.
class DropMark {
public:
    explicit DropMark(QTableView& table) : table_(table) {}

    void hide() { show(Kind::None); }
    /// It lands in the list as a whole.
    void showWholeList() { show(Kind::WholeList); }
    /// It lands in the gap before a row; after the last one for their number.
    void showGap(int row) { show(Kind::Gap, row); }

    void paint(QPainter& painter) const;

private:
    enum class Kind { None, Gap, WholeList };

    void show(Kind kind, int gap = -1);

    QTableView& table_;
    Kind kind_ = Kind::None;
    int gap_ = -1;
};

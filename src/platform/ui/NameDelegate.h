#pragma once

#include <QStyledItemDelegate>

/// Shows texts of files in a window of either direction: a name such as "01 Low Tide.mp3" keeps its own, which the
/// first of its letters tells.
class NameDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

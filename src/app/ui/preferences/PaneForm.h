#pragma once

#include <QGridLayout>

class QLabel;

/// How the panes arrange their controls: labels right-aligned beside the middle, controls to their right, and small
/// explanations below the controls that they belong to.
class PaneForm {
public:
    explicit PaneForm(QWidget& pane);

    /// @param label may be empty where the control tells all.
    void addRow(const QString& label, QWidget* control);
    QLabel* addNote(const QString& text);
    void addNote(QLabel* note);

private:
    void addLabel(const QString& text, QWidget* control, int row);

    QGridLayout& grid_;
    bool endsWithNote_ = false;
};

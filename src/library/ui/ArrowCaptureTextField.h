#pragma once

#include <QLineEdit>

/// A text field beside a list: Up and Down ask for the row above or below, whatever they do in the field itself.
class ArrowCaptureTextField : public QLineEdit {
    Q_OBJECT

public:
    using QLineEdit::QLineEdit;

signals:
    /// -1 for the row above, 1 for the row below.
    void rowStepWanted(int step);

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

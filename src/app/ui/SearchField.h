#pragma once

#include "library/ui/ArrowCaptureTextField.h"

/// The field by which the list is searched. Escape empties it; Escape and Return lead back to the list.
class SearchField : public ArrowCaptureTextField {
    Q_OBJECT

public:
    explicit SearchField(QWidget* parent = nullptr);

    /// Takes the keyboard, ready for another search.
    void begin();

signals:
    /// The keyboard is to go to the list.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

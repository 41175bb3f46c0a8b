#include "library/ui/ArrowCaptureTextField.h"

#include <QKeyEvent>

void ArrowCaptureTextField::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up)
        emit rowStepWanted(-1);
    else if (event->key() == Qt::Key_Down)
        emit rowStepWanted(1);
    QLineEdit::keyPressEvent(event);
}

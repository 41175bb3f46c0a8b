#include "platform/ui/FieldLabel.h"

#include <QLabel>

namespace {

/// An underlined letter may stand farther from the next one than the width of the label allows for.
constexpr int mnemonicRoom = 2;

} // namespace

QLabel* FieldLabel::make(const QString& text, QWidget* field)
{
    auto* label = new QLabel(text);
    label->setBuddy(field);
    label->setContentsMargins(mnemonicRoom, 0, mnemonicRoom, 0);
    return label;
}

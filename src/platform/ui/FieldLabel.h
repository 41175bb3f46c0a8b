#pragma once

class QLabel;
class QString;
class QWidget;

namespace FieldLabel {

/// The label before a field; the underlined letter in @p text, after "&", leads to the field.
QLabel* make(const QString& text, QWidget* field);

} // namespace FieldLabel

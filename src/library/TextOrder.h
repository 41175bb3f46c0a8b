#pragma once

#include <QCollator>

/// The order of names and texts that a person expects.
namespace TextOrder {

/// By the user's locale, ignoring case, with digits in the text as numbers.
QCollator collator();

} // namespace TextOrder

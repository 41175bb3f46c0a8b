#pragma once

#include <QCollator>
#include <QLocale>

/// The order of names and texts that a person expects.
namespace TextOrder {

/// The locale by which the user's texts are ordered and searched.
QLocale locale();

/// By the user's locale, ignoring case, with digits in the text as numbers.
QCollator collator();

} // namespace TextOrder

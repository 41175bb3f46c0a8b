#pragma once

#include <QString>

/// Track and disc numbers travel as one text: the number alone ("3"), or number and total ("3/12").
namespace NumberText {

/// The text that a summary shows where the selected records differ.
inline const QString various = QStringLiteral("Various");
/// The same for a number field.
inline const QString variousNumber = QStringLiteral("-");

struct Parts {
    QString num;
    QString total;
    bool operator==(const Parts&) const = default;
};

/// The first and last piece around "/"; a text without "/" is all number, and "Various" splits into "-" and "-".
Parts split(const QString& text);

/// The number alone when the total is empty; "0/" and the total when only the number is empty.
QString join(const QString& number, const QString& total);

} // namespace NumberText

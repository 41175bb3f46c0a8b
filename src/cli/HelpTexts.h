#pragma once

#include <QString>

/// What sonvika-cli says about its use. Lines are at most 79 characters wide.
namespace HelpTexts {

/// @param topic a command as it is typed ("art get"), a group of commands ("art"), or an empty text for the program,
/// which "help" stands for as well.
/// @return the text with its last end of line; a null text when there is no such topic.
QString about(const QString& topic);

} // namespace HelpTexts

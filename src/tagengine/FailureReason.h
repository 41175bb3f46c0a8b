#pragma once

#include <QCoreApplication>
#include <QString>

/// Why the engine operation under way on this thread fails, for whoever wants to tell the user. The first reason that
/// is noted counts.
namespace FailureReason {

// The reasons that are given in more than one place.
inline constexpr auto notSound = QT_TRANSLATE_NOOP("FailureReason", "This is no sound file of a known kind");
inline constexpr auto noFile = QT_TRANSLATE_NOOP("FailureReason", "This is no file");
inline constexpr auto noTag = QT_TRANSLATE_NOOP("FailureReason", "The file has no tag");
inline constexpr auto invalidText = QT_TRANSLATE_NOOP("FailureReason", "The text is not valid Unicode");
inline constexpr auto inUse = QT_TRANSLATE_NOOP("FailureReason", "Another program is changing the file");
inline constexpr auto locked = QT_TRANSLATE_NOOP("FailureReason", "Another program has locked the file");
inline constexpr auto damaged = QT_TRANSLATE_NOOP("FailureReason", "The structure of the file is damaged");
inline constexpr auto notHeld = QT_TRANSLATE_NOOP("FailureReason", "The tags of this file can't hold that");
inline constexpr auto tooCostly =
    QT_TRANSLATE_NOOP("FailureReason", "Reading the tags of this file would take too much memory or time");
inline constexpr auto unknownTag =
    QT_TRANSLATE_NOOP("FailureReason", "The tag is built in a way that Sonvika can't change without damage");
inline constexpr auto untrueLength =
    QT_TRANSLATE_NOOP("FailureReason", "A tag claims to be longer than it is, and sound may lie in what it claims");
inline constexpr auto lostPlaces =
    QT_TRANSLATE_NOOP("FailureReason", "The file could not tell any more where its sound lies");

/// An operation begins.
void clear();
/// @param error an errno value; 0 is no reason.
void note(int error);
/// @param text a source text of the context "FailureReason".
void note(const char* text);
/// In the user's language; empty when none was noted.
QString text();

} // namespace FailureReason

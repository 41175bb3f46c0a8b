#pragma once

#include "tagengine/PropertyMap.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <string>

/// The tag engine: the only door to the tags inside audio files.
///
/// Stateless. Every operation takes a path, opens the file afresh, saves it if it writes, and closes it before it
/// returns. TagLib chooses the container from the file: MPEG (ID3v2.2 to 2.4, ID3v1, APE), MP4 (`ilst`), RIFF WAV
/// (ID3v2 and INFO) and AIFF are served.
///
/// Readers return none on failure. Writers return whether the file was saved; a save that fails or is interrupted at
/// any moment leaves the file as it was, but that the owner may read and write it: what the permissions of the user's
/// own file lack for that is added to them first. Diagnostics are single lines on standard output (standard error for
/// detectStreamType) and never reach the user. Operations may run on any thread, but never two at once on the same file.
class TaglibWrapper {
public:
    TaglibWrapper() = delete;

    /// Brings back every file whose last change did not come to its end because the program or the machine stopped.
    /// To be called at start; each file is also brought back before it is opened.
    static void recoverInterruptedChanges();

    /// All tag fields. Generic text fields that are absent are empty texts, YEAR and TRACK are "0" when absent, and
    /// every key of TagLib's property interface is reported with the last of its values.
    /// @return none when the file can't be opened or has no tag.
    static std::optional<PropertyMap> getMetadata(const QString& path);

    /// Writes the given keys, in ascending order, in one save; keys that are not given keep their values. YEAR and
    /// TRACK take the leading decimal digits of the text; 0, no digits or a minus sign clear the field.
    /// @return true when the file was saved; false, with the file untouched, when it can't be opened, has no tag, or
    /// a value is not valid text (a lone surrogate).
    static bool setMetadata(const QString& path, const PropertyMap& changes);

    /// Removes every item that has no property key, embedded pictures included.
    /// @return true when the file was saved.
    static bool removeUnsupportedTags(const QString& path);

    /// Removes every item that the property interface knows; pictures and other unsupported items stay.
    /// @return true when the file was saved.
    static bool removeAllTags(const QString& path);

    /// removeUnsupportedTags, but for the first picture, which stays as it is, in one save.
    static bool removeUnsupportedTagsKeepingImage(const QString& path);

    /// removeAllTags, and the pictures as well, in one save.
    static bool removeAllTagsAndImages(const QString& path);

    /// @return the title, or none when the file can't be opened or has no tag.
    static std::optional<QString> getTitle(const QString& path);

    /// @return the comment, or none when the file can't be opened or has no tag.
    static std::optional<QString> getComment(const QString& path);

    /// Sets the comment alone. @return true when the file was saved.
    static bool writeComment(const QString& path, const QString& comment);

    /// The first embedded picture: the first ID3v2 APIC frame, or the first entry of the MP4 `covr` item.
    /// @param type "mp3" or "m4a" exactly: the container that the caller expects.
    /// @return the stored bytes unchanged; none without a picture, for another type, or when the file's container is
    /// not of that type.
    static std::optional<QByteArray> getImageData(const QString& path, const QString& type);

    /// What readTrack found besides the picture.
    struct Contents {
        PropertyMap tags;
        /// All values of the keys that have several, of which `tags` has the last.
        QMap<QString, QStringList> severalValues;
        /// As getChapters gives them.
        std::optional<QStringList> chapters;
    };

    /// getMetadata, getImageData and getChapters in one reading of the file, without a copy of the picture.
    /// @param visitImage is called with the bytes that getImageData would return, which are gone after the call; not
    /// called where it would return none.
    /// @return none where getMetadata would return none.
    static std::optional<Contents> readContents(const QString& path, const QString& type,
                                                const std::function<void(const QByteArray&)>& visitImage);

    /// The same without the chapters. @return what getMetadata would return.
    static std::optional<PropertyMap> readTrack(const QString& path, const QString& type,
                                                const std::function<void(const QByteArray&)>& visitImage);

    /// Replaces the first picture (MPEG; further APIC frames stay) or all pictures (MP4). Empty bytes remove all.
    /// The bytes are stored unchanged and always labelled as JPEG.
    /// @param type as for getImageData.
    /// @return true when the file was saved; false, with the file untouched, for another type or container.
    static bool setImageData(const QByteArray& bytes, const QString& path, const QString& type);

    /// The lower-cased extension of the name or, for a name without one, what detectStreamType finds.
    /// @return none when the name has no extension and the content is not recognised.
    static std::optional<QString> detectFileType(const QString& path);

    /// Probes the content: "mp3", "m4a", "wav" or "aif".
    /// @return none when no probe accepts the content, or the file can't be opened.
    static std::optional<QString> detectStreamType(const QString& path);

    /// The chapters of an MPEG file (ID3v2 Chapter Frame Addendum) in the tag's order, each as title, "@" and start
    /// time in milliseconds ("Intro@0").
    /// @return none when the file can't be opened or is not MPEG; an empty list when it has no chapters.
    static std::optional<QStringList> getChapters(const QString& path);

    /// Replaces all chapters of an MPEG file. A text without "@" starts at 0; an empty list removes all chapters.
    /// Written chapters get element identifiers that are unique in the tag.
    /// @return true when the file was saved.
    static bool setChapters(const QString& path, const QStringList& chapters);

    /// Why the last operation of this thread failed, in the user's language: in the system's words where it was the
    /// system that refused. Empty when nothing more is known. Only to be asked after a failure.
    static QString failureReason();

    /// Text from TagLib's wide-character form, which may hold UTF-32 code points or UTF-16 code units.
    /// @return none when it is neither (a lone surrogate, a value beyond U+10FFFF).
    static std::optional<QString> stringFromWchar(const std::wstring& wide);
};

#include "tagengine/EngineReads.h"
#include "tagengine/FailureReason.h"
#include "tagengine/Id3v2Edit.h"
#include "tagengine/OpenedFile.h"
#include "tagengine/TagSplice.h"
#include "tagengine/TagText.h"
#include "tagengine/TaglibWrapper.h"

#include <taglib/chapterframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>

#include <algorithm>
#include <set>

namespace {

using ChapterFrame = TagLib::ID3v2::ChapterFrame;

constexpr auto notMpeg = QT_TRANSLATE_NOOP("FailureReason", "Only MP3 files can have chapters");

// The library's own default for the byte offsets; the times alone place a chapter.
constexpr unsigned int defaultOffset = 0;

void appendChapterTexts(const ChapterFrame& chapter, QStringList& chapters)
{
    const QString start = QLatin1Char('@') + QString::number(static_cast<int>(chapter.startTime()));
    for (const auto* frame : chapter.embeddedFrameList()) {
        if (frame->frameID() == "TIT2")
            chapters += TagText::fromTagLib(frame->toString()).value_or(QString()) + start;
    }
}

std::set<QByteArray> contentsIdentifiers(const Id3v2Bytes& tag)
{
    std::set<QByteArray> identifiers;
    constexpr unsigned int headerSize = 10;
    for (const auto& frame : tag.frames()) {
        if (frame.id == "CTOC")
            identifiers.insert(QByteArray(TagText::toBytes(frame.bytes.mid(headerSize)).constData()));
    }
    return identifiers;
}

/// The next "chN" that no table of contents uses.
QByteArray nextIdentifier(const std::set<QByteArray>& taken, int& counter)
{
    QByteArray identifier;
    do {
        identifier = "ch" + QByteArray::number(counter++);
    } while (taken.contains(identifier));
    return identifier;
}

} // namespace

std::optional<QStringList> TaglibWrapper::getChapters(const QString& path)
{
    return EngineReads::chapters(OpenedFile(path));
}

std::optional<QStringList> EngineReads::chapters(const OpenedFile& file)
{
    if (file.isNull() || !file.tag())
        return std::nullopt;
    auto* mpeg = file.as<TagLib::MPEG::File>();
    if (!mpeg) {
        FailureReason::note(notMpeg);
        return std::nullopt;
    }
    QStringList chapters;
    if (const auto* tag = mpeg->ID3v2Tag(false)) {
        for (const auto* frame : tag->frameList("CHAP")) {
            if (const auto* chapter = dynamic_cast<const ChapterFrame*>(frame))
                appendChapterTexts(*chapter, chapters);
        }
    }
    return chapters;
}

/// Identifier, start and end in milliseconds, the byte offsets of both, and the title.
TagLib::ByteVector Id3v2Edit::chapterBody(const QString& text, const QByteArray& identifier) const
{
    const QStringList pieces = text.split(QLatin1Char('@'));
    const auto start = TagLib::ByteVector::fromUInt(pieces.size() > 1 ? TagText::leadingNumber(pieces[1]) : 0);
    const auto offset = TagLib::ByteVector::fromUInt(defaultOffset);
    return TagText::fromBytes(identifier).append('\0') + start + start + offset + offset
           + tag_.makeEmbeddedFrame("TIT2", textBody(TagText::toTagLib(pieces.first())));
}

bool Id3v2Edit::setChapters(const QStringList& chapters)
{
    if (tag_.version() == 2 && !chapters.isEmpty()) {
        FailureReason::note(QT_TRANSLATE_NOOP("FailureReason", "Tags of the version ID3v2.2 have no chapters"));
        return false;
    }
    const auto taken = contentsIdentifiers(tag_);
    int counter = 0;
    std::vector<std::optional<Frame>> frames;
    for (const auto& text : chapters)
        frames.push_back(tag_.makeFrame("CHAP", chapterBody(text, nextIdentifier(taken, counter))));
    return replace(find([](const Frame& frame, TagLib::ID3v2::Frame*) { return frame.id == "CHAP"; }),
                   std::move(frames));
}

bool TaglibWrapper::setChapters(const QString& path, const QStringList& chapters)
{
    return OpenedFile::rewrite(path, [&](OpenedFile& file) {
        if (file.isNull() || !file.tag())
            return false;
        if (!file.as<TagLib::MPEG::File>()) {
            TagText::printLine(QStringLiteral("TaglibWrapper.setChapters: Not a MPEG File"));
            FailureReason::note(notMpeg);
            return false;
        }
        if (!std::all_of(chapters.begin(), chapters.end(), TagText::isValid)) {
            FailureReason::note(FailureReason::invalidText);
            return false;
        }
        file.expect({});
        return file.splice()->setChapters(chapters);
    });
}

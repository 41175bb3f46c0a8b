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
#include <map>
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

QString titleOf(const QString& text)
{
    return text.section(QLatin1Char('@'), 0, 0);
}

unsigned int startOf(const QString& text)
{
    return TagText::leadingNumber(text.section(QLatin1Char('@'), 1, 1));
}

/// Title, "@" and start of a chapter frame; a null text for one that has not just these.
QString textOf(const Id3v2Bytes& tag, const Id3v2Bytes::Frame& frame)
{
    const TagLib::ByteVector body = tag.bodyOf(frame);
    const int idEnd = body.find(TagLib::ByteVector(1, '\0'));
    constexpr unsigned int times = 16;
    if (idEnd < 0)
        return {};
    const auto start = static_cast<unsigned int>(idEnd) + 1;
    QStringList titles;
    for (const auto& inner : tag.embeddedFrames(body.mid(start + times))) {
        const auto parsed = inner.id == "TIT2" ? tag.read(inner) : nullptr;
        if (parsed)
            titles += TagText::fromTagLib(parsed->toString()).value_or(QString());
    }
    return titles.size() == 1 ? titles.front() + QLatin1Char('@') + QString::number(body.toUInt(start, true))
                              : QString();
}

/// The identifiers that a table of contents has for itself and its children: its body is one, flags, a count, the others.
void addIdentifiers(const TagLib::ByteVector& contents, std::set<QByteArray>& identifiers)
{
    constexpr qsizetype flagsAndCount = 2;
    const QByteArray body = TagText::toBytes(contents);
    qsizetype at = body.indexOf('\0');
    identifiers.insert(body.left(at));
    const int count = at >= 0 && at + flagsAndCount < body.size() ? static_cast<quint8>(body[at + flagsAndCount]) : 0;
    at += flagsAndCount + 1;
    for (int child = 0; child < count && at < body.size(); ++child) {
        const auto end = body.indexOf('\0', at);
        identifiers.insert(body.mid(at, end < 0 ? -1 : end - at));
        at = end < 0 ? body.size() : end + 1;
    }
}

/// The next "chN" that is not taken.
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
    return OpenedFile::read(path, [](const OpenedFile& file) { return EngineReads::chapters(file); });
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
    const auto start = TagLib::ByteVector::fromUInt(startOf(text));
    const auto offset = TagLib::ByteVector::fromUInt(defaultOffset);
    return TagText::fromBytes(identifier).append('\0') + start + start + offset + offset
           + tag_.makeEmbeddedFrame("TIT2", textBody(TagText::toTagLib(titleOf(text))));
}

bool Id3v2Edit::setChapters(const QStringList& chapters)
{
    if (tag_.version() == 2 && !chapters.isEmpty()) {
        FailureReason::note(QT_TRANSLATE_NOOP("FailureReason", "Tags of the version ID3v2.2 have no chapters"));
        return false;
    }
    const Places places = find([](const Frame& frame, TagLib::ID3v2::Frame*) { return frame.id == "CHAP"; });
    std::vector<std::optional<Frame>> frames = keptChapters(chapters, places);
    std::set<QByteArray> taken;
    for (const auto& frame : tag_.frames()) {
        if (frame.id == "CTOC")
            addIdentifiers(tag_.bodyOf(frame), taken);
    }
    for (const auto& frame : frames) {
        if (frame)
            taken.insert(QByteArray(TagText::toBytes(tag_.bodyOf(*frame)).constData()));
    }
    int counter = 0;
    for (std::size_t at = 0; at < frames.size(); ++at) {
        const QString& text = chapters[static_cast<qsizetype>(at)];
        if (!frames[at])
            frames[at] = tag_.makeFrame("CHAP", chapterBody(text, nextIdentifier(taken, counter)));
    }
    return replace(places, std::move(frames));
}

/// The frames of the chapters that stay as they are, with their pictures, links and ends; none for the others.
std::vector<std::optional<Id3v2Edit::Frame>> Id3v2Edit::keptChapters(const QStringList& chapters,
                                                                     const Places& places) const
{
    std::multimap<QString, Frame> old;
    for (const std::size_t place : places)
        old.emplace(textOf(tag_, tag_.frames()[place]), tag_.frames()[place]);
    std::vector<std::optional<Frame>> frames;
    for (const auto& text : chapters) {
        const auto same = old.find(titleOf(text) + QLatin1Char('@') + QString::number(startOf(text)));
        frames.push_back(same == old.end() ? std::nullopt : std::optional(same->second));
        if (same != old.end())
            old.erase(same);
    }
    return frames;
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

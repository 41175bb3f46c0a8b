#include "tagengine/EngineReads.h"
#include "tagengine/FailureReason.h"
#include "tagengine/OpenedFile.h"
#include "tagengine/TagText.h"
#include "tagengine/TaglibWrapper.h"

#include <taglib/chapterframe.h>
#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/tableofcontentsframe.h>
#include <taglib/textidentificationframe.h>

#include <algorithm>
#include <memory>
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

std::set<QByteArray> contentsIdentifiers(const TagLib::ID3v2::Tag& tag)
{
    std::set<QByteArray> identifiers;
    for (const auto* frame : tag.frameList("CTOC")) {
        if (const auto* contents = dynamic_cast<const TagLib::ID3v2::TableOfContentsFrame*>(frame))
            identifiers.insert(QByteArray(TagText::toBytes(contents->elementID()).constData()));
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

std::unique_ptr<ChapterFrame> makeChapter(const QString& text, const QByteArray& identifier)
{
    const QStringList pieces = text.split(QLatin1Char('@'));
    const unsigned int start = pieces.size() > 1 ? TagText::leadingNumber(pieces[1]) : 0;
    auto chapter =
        std::make_unique<ChapterFrame>(TagText::fromBytes(identifier), start, start, defaultOffset, defaultOffset);
    auto title = std::make_unique<TagLib::ID3v2::TextIdentificationFrame>("TIT2", TagLib::String::UTF8);
    title->setText(TagText::toTagLib(pieces.first()));
    chapter->addEmbeddedFrame(title.release());
    return chapter;
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

bool TaglibWrapper::setChapters(const QString& path, const QStringList& chapters)
{
    return OpenedFile::rewrite(path, [&](OpenedFile& file) {
        if (file.isNull() || !file.tag())
            return false;
        auto* mpeg = file.as<TagLib::MPEG::File>();
        if (!mpeg) {
            TagText::printLine(QStringLiteral("TaglibWrapper.setChapters: Not a MPEG File"));
            FailureReason::note(notMpeg);
            return false;
        }
        if (!std::all_of(chapters.begin(), chapters.end(), TagText::isValid)) {
            FailureReason::note(FailureReason::invalidText);
            return false;
        }
        if (!chapters.isEmpty())
            file.fillId3v2Tag();
        auto* tag = mpeg->ID3v2Tag(true);
        tag->removeFrames("CHAP");
        const auto taken = contentsIdentifiers(*tag);
        int counter = 0;
        for (const auto& text : chapters)
            tag->addFrame(makeChapter(text, nextIdentifier(taken, counter)).release());
        return true;
    });
}

#include "tagengine/TaglibWrapper.h"
#include "support/ChildProcess.h"
#include "support/ConsoleCapture.h"
#include "support/HostileFiles.h"
#include "support/OtherReaders.h"
#include "support/PropertyText.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <iostream>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

namespace {

const QString blank = u"TITLE=;ARTIST=;ALBUM=;COMMENT=;GENRE=;YEAR=0;TRACK=0;"_qs;
const QString common = u"ARTIST=The Testers;ALBUM=First Light;"_qs;
const QString full = common
                     + u"TITLE=Blue Window;ALBUMARTIST=The Testers and Friends;COMMENT=Made for tests;COMPILATION=1;"
                       "DATE=2001;YEAR=2001;DISCNUMBER=1/2;GENRE=Electronic;TRACK=3;TRACKNUMBER=3/12"_qs;
const QString longText(5000, u'c');
const QString loneSurrogate{QChar(0xD83D)};

/// A copy of a fixture, under another name if one is given.
struct Copy {
    explicit Copy(const QString& file, const QString& name = {}) : fixture(file), path(scratch.copy(file, name)) {}

    PropertyMap tags() const { return TaglibWrapper::getMetadata(path).value_or(PropertyMap()); }
    QByteArray picture() const { return TaglibWrapper::getImageData(path, type).value_or(QByteArray()); }
    bool isAsBefore() const { return ScratchFolder::contents(path) == ScratchFolder::fixture(fixture); }

    ScratchFolder scratch;
    QString fixture;
    QString path;
    QString type = path.right(3);
};

/// How many of all ways to change a file say that they did.
auto countWrites(const QString& path)
{
    const std::vector saved{TaglibWrapper::setMetadata(path, {{u"TITLE"_qs, u"New"_qs}}),
                            TaglibWrapper::removeUnsupportedTags(path),
                            TaglibWrapper::removeAllTags(path),
                            TaglibWrapper::writeComment(path, u"New"_qs),
                            TaglibWrapper::setChapters(path, {u"Intro@0"_qs}),
                            TaglibWrapper::setImageData("picture", path, path.right(3))};
    return std::count(saved.begin(), saved.end(), true);
}

/// What this process has used at most: memory in bytes, and seconds.
std::pair<qint64, double> used()
{
    struct rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    return {usage.ru_maxrss * qint64(1024), double(usage.ru_utime.tv_sec) + double(usage.ru_utime.tv_usec) / 1e6};
}

/// From here on, this process gets little more memory than it has.
void limitMemory(rlim_t more)
{
    QFile sizes(u"/proc/self/statm"_qs);
    if (!sizes.open(QIODevice::ReadOnly))
        qFatal("Can't tell the size of the process");
    const rlim_t now = sizes.readAll().split(' ').front().toULong() * rlim_t(::sysconf(_SC_PAGESIZE));
    const struct rlimit limit {
        now + more, now + more
    };
    ::setrlimit(RLIMIT_AS, &limit);
}

} // namespace

class TaglibWrapperTest : public QObject {
    Q_OBJECT

private slots:
    // Files of the same tags, and the tags.
    void reads_data()
    {
        addRows({"v24.mp3,v23.mp3,truncated.mp3,mp3-named.m4a,no-extension-mp3,tagged.m4a,no-extension-m4a,tagged."
                 "aiff | full",
                 "untagged.mp3,untagged.m4a,empty.mp3,text.mp3", "emoji.mp3,emoji.m4a | TITLE=Smile 😀",
                 "two-artists.mp3 | TITLE=Two Artists;ARTIST=Second Artist",
                 "date.mp3 | TITLE=Dated;DATE=2001-05-03;YEAR=2001",
                 "v22.mp3 | common;TITLE=Old Frame;DATE=1999;YEAR=1999;TRACK=3;TRACKNUMBER=3/12",
                 "v1.mp3 | common;TITLE=Short Title;COMMENT=Made for tests;GENRE=Electronic;DATE=1998;YEAR=1998;"
                 "TRACK=7;TRACKNUMBER=7",
                 "ape.mp3 | common;TITLE=Ape Title;GENRE=Electronic;DATE=2001;YEAR=2001;TRACK=3;TRACKNUMBER=3/12",
                 "info.wav | common;TITLE=Wave Title;COMMENT=Made for tests;GENRE=Electronic;DATE=2001;YEAR=2001;"
                 "TRACK=3;TRACKNUMBER=3"});
    }
    void reads()
    {
        auto [files, expected] = row<2>();
        expected.replace(u"full"_qs, full).replace(u"common;"_qs, common);
        for (const auto& file : files.split(u',')) {
            const Copy copy(file);
            QCOMPARE(copy.tags(), propertyMap(blank + expected));
            QVERIFY(copy.isAsBefore());
        }
    }

    // File, what is written, an expression about the file and what it gives.
    void writesWhatOthersRead_data()
    {
        addRows({"v24.mp3 | TRACK=4;TRACKNUMBER=4/13 | tags['TRCK'] | 4/13",
                 "tagged.m4a | TRACK=4;TRACKNUMBER=4/13 | tags['trkn'] | [(4, 13)]",
                 "v23.mp3 | ALBUMARTIST= | 'TPE2' in tags | False",
                 "tagged.m4a | ALBUMARTIST= | 'aART' in tags | False",
                 "padded.m4a | TITLE= | '\\xa9nam' in tags | False",
                 "untagged.mp3 | ALBUMARTIST=A | tags['TPE2'] | A",
                 "untagged.m4a | ALBUMARTIST=A | tags['aART'] | ['A']",
                 "v22.mp3 | TITLE=ü 😀 | tags['TIT2'] | ü 😀",
                 "tagged.m4a | TITLE=ü 😀 | tags['\\xa9nam'] | ['ü 😀']",
                 "faststart.m4a | COMMENT=long | len(tags['\\xa9cmt'][0]) | 5000",
                 "ape.mp3 | TITLE=New | APEv2(path)['Title'] | New",
                 "v1.mp3 | TITLE=New | data[-125:-121] | b'New\\x00'",
                 "info.wav | TITLE=New | tags['TIT2'] | New",
                 "info.wav | TITLE=New;ALBUMARTIST=A | b'INAM\\4\\0\\0\\0New\\0' in data | True",
                 "info.wav | YEAR=1987 | b'ICRD\\5\\0\\0\\x001987' in data | True",
                 "tagged.aiff | ARTIST=New | tags['TPE1'] | New",
                 "v23.mp3 |  | tags['TCMP'] | 1",
                 "faststart.m4a |  | tags['cpil'] | True",
                 "untagged.mp3 | ART=cover.png | APIC | [('image/jpeg', 0, '', 1154)]",
                 "two-pictures.mp3 | ART=cover.png | APIC | "
                 "[('image/jpeg', 3, 'Front', 1154), ('image/png', 4, 'Back', 1154)]",
                 "two-pictures.mp3 | ART= | APIC | []",
                 "v1.mp3 | ART= | APIC | []",
                 "ape.mp3 | ART=cover.png | APIC | [('image/jpeg', 0, '', 1154)]",
                 "untagged.m4a | ART=cover.png | covr | [(13, 1154)]",
                 "faststart.m4a | ART=chapters.mp3 | covr | [(13, 5716)]",
                 "tagged.m4a | ART= | covr | []"});
    }

    void writesWhatOthersRead()
    {
        auto [file, changes, expression, expected] = row<4>();
        const Copy copy(file);
        PropertyMap rest = copy.tags();
        const QString sound = OtherReaders::soundDigest(copy.path);
        QVERIFY2(sound.startsWith(u"MD5="), qPrintable(sound));
        const bool isPicture = changes.startsWith(u"ART=");
        const QString source = changes.section(u'=', 1);
        QByteArray picture = copy.picture();
        if (isPicture)
            picture = source.isEmpty() ? QByteArray() : ScratchFolder::fixture(source);
        const PropertyMap written = propertyMap(isPicture ? QString() : changes.replace(u"long"_qs, longText));
        QVERIFY(isPicture ? TaglibWrapper::setImageData(picture, copy.path, copy.type)
                          : TaglibWrapper::setMetadata(copy.path, written));
        const QString frames = u"[(p.mime, int(p.type), p.desc, len(p.data)) for p in tags.getall('APIC')]"_qs;
        const QString covers = u"[(int(c.imageformat), len(c)) for c in tags.get('covr', [])]"_qs;
        expression = expression == u"APIC" ? frames : expression == u"covr" ? covers : expression;
        QCOMPARE(OtherReaders::mutagen(copy.path, expression), expected);
        QCOMPARE(OtherReaders::soundDigest(copy.path), sound);
        QCOMPARE(copy.picture(), picture);
        PropertyMap after = copy.tags();
        for (const auto& key : written.keys() + QStringList(u"DATE"_qs)) {
            rest.remove(key);
            after.remove(key);
        }
        QCOMPARE(after, rest);
    }

    void writesLeadingNumbers_data()
    {
        addRows(
            {" | 0", "-5 | 0", "+-5 | 0", "abc | 0", "3000000000 | 0", "2002-05-03 | 2002", "+7 | 7", " \t12 | 12"});
    }

    void writesLeadingNumbers()
    {
        const auto [text, expected] = row<2>();
        for (const auto& file : {u"v24.mp3"_qs, u"tagged.m4a"_qs, u"info.wav"_qs}) {
            const Copy copy(file);
            QVERIFY(TaglibWrapper::setMetadata(copy.path, {{u"YEAR"_qs, text}, {u"TRACK"_qs, text}}));
            const auto map = copy.tags();
            QCOMPARE(map[u"YEAR"_qs] + map[u"TRACK"_qs], expected.repeated(2));
            QCOMPARE(map.contains(u"DATE"_qs), expected != u"0"_qs);
        }
    }

    void failedWritesLeaveFileAsItIs_data() { addRows({"v24.mp3", "tagged.m4a", "faststart.m4a"}); }

    void failedWritesLeaveFileAsItIs()
    {
        const Copy copy(row()[0]);
        const ConsoleCapture console(std::cout);
        QVERIFY(!TaglibWrapper::setMetadata(copy.path, {{u"ALBUM"_qs, u"A"_qs}, {u"TITLE"_qs, loneSurrogate}}));
        QVERIFY(!TaglibWrapper::writeComment(copy.path, loneSurrogate));
        QVERIFY(!TaglibWrapper::setChapters(copy.path, {loneSurrogate}));
        QVERIFY(copy.isAsBefore());
    }

    void removesTags_data() { addRows({"v24.mp3", "v22.mp3", "v1.mp3", "ape.mp3", "unsupported.mp3", "tagged.m4a"}); }

    void removesTags()
    {
        const Copy copy(row()[0]);
        const QByteArray picture = copy.picture();
        QVERIFY(TaglibWrapper::removeAllTags(copy.path));
        QCOMPARE(copy.tags(), propertyMap(blank));
        QCOMPARE(copy.picture(), picture);

        const Copy other(row()[0]);
        const PropertyMap tags = other.tags();
        QVERIFY(TaglibWrapper::removeUnsupportedTags(other.path));
        const QString found = u"[k for k in tags or [] if k[:4] in 'APIC covr PRIV UFID GEOB']"_qs;
        QCOMPARE(OtherReaders::mutagen(other.path, found), u"[]"_qs);
        QCOMPARE(other.tags(), tags);
    }

    void reportsFilesThatDoNotOpen_data() { addRows({"missing.mp3", "cover.jpg", "truncated.m4a"}); }

    void reportsFilesThatDoNotOpen()
    {
        const ScratchFolder scratch;
        const QString file = row()[0];
        const QString path = file.startsWith(u"missing") ? scratch.path(file) : scratch.copy(file);
        const ConsoleCapture console(std::cout);
        QVERIFY(!TaglibWrapper::getMetadata(path) && !TaglibWrapper::getTitle(path));
        QVERIFY(!TaglibWrapper::getImageData(path, path.right(3)) && !TaglibWrapper::getChapters(path));
        QCOMPARE(console.text(), QString());
        QVERIFY(!TaglibWrapper::getComment(path));
        QCOMPARE(countWrites(path), 0);
        const QString error = u"Error: TagLib::FileRef.isNull: Unable to open file:"_qs + path + u'\n';
        QCOMPARE(console.text(),
                 u"FileRef is nil for: "_qs + path + u'\n' + error.repeated(3) + u"Unable to write comment\n"_qs);
    }

    // Whether the file opens all the same.
    void takesLittleForAnyFile_data()
    {
        addRows({"nothing.mp3 | opens", "values.mp3", "compressed.mp3", "text.mp3", "frames.mp3", "chapter.mp3",
                 "tags.mp3", "items.mp3", "values.m4a", "pictures.m4a", "atoms.m4a", "chunks.wav"});
    }

    void takesLittleForAnyFile()
    {
        const auto [name, expected] = row<2>();
        const ScratchFolder scratch;
        const QString path = scratch.path(name);
        const QByteArray bytes = HostileFiles::made(name);
        ScratchFolder::write(path, bytes);
        if (bytes.isEmpty())
            QVERIFY(QFile::resize(path, 300 << 20));
        enum { Opens = 1, Large = 2, Slow = 4, NoReason = 8 };
        const int code = inChildProcess([&] {
            const auto before = used();
            const bool isOpen =
                TaglibWrapper::readContents(path, path.right(3), [](const QByteArray&) {}).has_value();
            const bool hasReason = isOpen || !TaglibWrapper::failureReason().isEmpty();
            const auto after = used();
            [[maybe_unused]] const bool isLarge = after.first - before.first > 8 * bytes.size() + (32 << 20);
#ifdef __SANITIZE_ADDRESS__
            const int cost = 0; // the sanitizer's own
#else
            const int cost = isLarge * Large + (after.second - before.second > 1) * Slow;
#endif
            return isOpen * Opens + cost + !hasReason * NoReason;
        });
        QCOMPARE(code, expected.isEmpty() ? 0 : int(Opens));
        QVERIFY(!expected.isEmpty() || !TaglibWrapper::removeAllTagsAndImages(path));
        QVERIFY(bytes.isEmpty() || ScratchFolder::contents(path) == bytes);
    }

    void failsAloneWhereMemoryRunsOut()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("The sanitizer needs the memory for itself");
#endif
        const Copy good(u"v24.mp3"_qs);
        const QString large = good.scratch.path(u"large.mp3"_qs);
        ScratchFolder::write(large, HostileFiles::id3v23(QByteArray(100'000'000, '\0')));
        const int failures = inChildProcess([&] {
            ::signal(SIGABRT, SIG_DFL);
            limitMemory(30 << 20);
            const bool isRead = TaglibWrapper::getMetadata(large).has_value();
            const bool hasReason = TaglibWrapper::failureReason() == qt_error_string(ENOMEM);
            return isRead + !hasReason + int(countWrites(large)) + int(6 - countWrites(good.path));
        });
        QCOMPARE(failures, 0);
    }

    void convertsWideText()
    {
        const auto convert = [](const std::wstring& wide) { return TaglibWrapper::stringFromWchar(wide); };
        QCOMPARE(convert(L"Grün"), u"Grün"_qs);
        for (const std::wstring& smile : {std::wstring{0x1F600}, std::wstring{0xD83D, 0xDE00}})
            QCOMPARE(convert(smile), u"😀"_qs);
        for (const std::wstring& bad : {std::wstring{0xD83D}, std::wstring{0xDE00, 0xD83D}, std::wstring{0x110000}})
            QCOMPARE(convert(bad), std::nullopt);
    }

    void refusesWhatTheContainerDoesNotHold_data()
    {
        addRows({"v24.mp3 | MP3", "v24.mp3 | m4a", "tagged.m4a | ", "mp3-named.m4a | m4a", "m4a-named.mp3 | mp3",
                 "info.wav | mp3", "tagged.aiff | aiff"});
    }

    void refusesWhatTheContainerDoesNotHold()
    {
        const auto [file, type] = row<2>();
        const Copy copy(file);
        QVERIFY(!TaglibWrapper::getImageData(copy.path, type));
        for (const auto& picture : {"picture", ""})
            QVERIFY(!TaglibWrapper::setImageData(picture, copy.path, type));
        const bool isMpeg = file.endsWith(u"mp3") || file.startsWith(u"mp3");
        QCOMPARE(TaglibWrapper::getChapters(copy.path).has_value(), isMpeg);
        QVERIFY(isMpeg || !TaglibWrapper::setChapters(copy.path, {u"Intro@0"_qs}));
        QVERIFY(copy.isAsBefore());
    }

    // Fixture, the name of its copy, and the type.
    void detectsFileType_data()
    {
        addRows({"v24.mp3 | Song.MP3 | mp3", "text.mp3 | Song.Flac | flac", "v24.mp3 | Song.mp3.m4a | m4a",
                 "no-extension-mp3 | song | mp3", "untagged.mp3 | song | mp3", "no-extension-m4a | song | m4a",
                 "info.wav | song | wav", "tagged.aiff | song | aif", "tagged.m4a | song. | m4a", "text.mp3 | song",
                 "empty.mp3 | song"});
    }

    void detectsFileType()
    {
        const auto [fixture, name, expected] = row<3>();
        const Copy copy(fixture, name);
        const ConsoleCapture errors(std::cerr);
        QCOMPARE(TaglibWrapper::detectFileType(copy.path).value_or(QString()), expected);
        QCOMPARE(errors.text(), QString());
        QVERIFY(!TaglibWrapper::detectFileType(copy.scratch.path(u"missing"_qs)));
        QVERIFY(errors.text().contains(u"Unable to open FileStream: "_qs));
    }

    // The table of contents keeps ch0 and ch1 for its children, and a chapter that stays keeps its own.
    void replacesChapters_data()
    {
        addRows({"Intro 😀@0,Verse@900 | Intro 😀@0,Verse@900 | ['ch1', 'ch2']", " |  | []", "A@B@1000 | A@0 | ['ch2']",
                 "A@-5,B@ 7x,C@99999999999,D | A@0,B@7,C@0,D@0 | ['ch2', 'ch3', 'ch4', 'ch5']"});
    }

    void replacesChapters()
    {
        const auto [written, expected, identifiers] = row<3>();
        const Copy copy(u"chapters.mp3"_qs);
        const QString& path = copy.path;
        QCOMPARE(TaglibWrapper::getChapters(path), QStringList({u"Intro@0"_qs, u"Verse@900"_qs}));
        QVERIFY(TaglibWrapper::setChapters(path, written.split(u',', Qt::SkipEmptyParts)));
        QCOMPARE(TaglibWrapper::getChapters(path), expected.split(u',', Qt::SkipEmptyParts));
        QCOMPARE(OtherReaders::mutagen(path, u"sorted(c.element_id for c in tags.getall('CHAP'))"_qs), identifiers);
        QCOMPARE(OtherReaders::mutagen(path, u"tags['CTOC:toc'].element_id + str(tags['TIT2'])"_qs),
                 u"tocTwo Chapters"_qs);
    }
};

QTEST_GUILESS_MAIN(TaglibWrapperTest)
#include "TaglibWrapperTest.moc"

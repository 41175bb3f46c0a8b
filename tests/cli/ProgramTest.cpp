#include "support/CutShort.h"
#include "support/OtherReaders.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <csignal>

namespace {

/// A shell script that runs the program in a folder of its own.
class Script {
public:
    Script()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_qs, QStringLiteral(CLI_FOLDER ":/usr/bin:/bin"));
        environment.insert(u"XDG_CONFIG_HOME"_qs, folder.path(u"config"_qs));
        environment.insert(u"XDG_STATE_HOME"_qs, folder.path(u"state"_qs));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(folder.path(u"."_qs));
        folder.copy(u"v24.mp3"_qs, u"a.mp3"_qs);
        folder.copy(u"tagged.m4a"_qs, u"b.m4a"_qs);
        folder.copy(u"chapters.mp3"_qs, u"c d.mp3"_qs);
        folder.copy(u"cover.png"_qs);
        folder.copy(u"cover.jpg"_qs);
    }
    ~Script()
    {
        process.kill();
        process.waitForFinished();
        QFile::setPermissions(folder.path(u"a.mp3"_qs), QFile::ReadOwner | QFile::WriteOwner);
    }

    void start(const QString& text)
    {
        process.start(u"/bin/bash"_qs, {u"-c"_qs, u"cli() { sonvika-cli \"$@\"; };"_qs + text});
    }
    bool run(const QString& text)
    {
        start(text);
        return process.waitForFinished(60'000);
    }

    ScratchFolder folder;
    QProcess process;
};

/// The text on one line: spaces at its ends are cut off and its lines joined by ";".
QString onOneLine(const QByteArray& text)
{
    return QString::fromUtf8(text).trimmed().replace(u'\n', u';').replace(u'\t', u'>').simplified();
}

} // namespace

class ProgramTest : public QObject {
    Q_OBJECT

private slots:
    // script | exit status | standard output | standard error
    void runs_data()
    {
        addRows({
            "cli --version|grep -cxE 'sonvika-cli [0-9]+([.][0-9]+)+' | 0 | 1",
            "cli set | 2 |  | sonvika-cli: --tag is missing.;Try 'sonvika-cli set --help'.",
            "for c in -h 'help help' 'help art set' 'art -h' 'set --tag A=b --help';do cli $c|head -1;done | 0 | "
            "Usage: sonvika-cli COMMAND [OPTION …] FILE …;Usage: sonvika-cli COMMAND [OPTION …] FILE …;"
            "Usage: sonvika-cli art set --image IMAGE FILE …;"
            "Usage: sonvika-cli art get --output IMAGE [--convert] FILE;"
            "Usage: sonvika-cli set --tag KEY=VALUE [--tag …] FILE …",
            "cp cover.png ./--json;cli art set a.mp3 --image --json&&cli show a.mp3 --json|grep -c png | 0 | 1",
            "cli set b.m4a --tag title=a=b --tag=ARTIST= --tag 'x y=-z'&&cli show b.m4a|grep -E 'Title|Artist|X Y' | "
            "0 "
            "| Title a=b; X Y -z",
            "cli rename --token Track --token -- --token - --dry-run b.m4a | 0 | b.m4a -> 03---.m4a",
            "cli show gone.mp3 cover.jpg 'c d.mp3' | 1 | c d.mp3; Type mp3; Title Two Chapters; Chapter 0:00:00.000 "
            "Intro; Chapter 0:00:00.900 Verse | gone.mp3: No such file or directory;cover.jpg: This is no sound file "
            "of a known kind",
            "cli set --tag title=Ünï --tag TRACKNUM=7 --tag disctotal=3 b.m4a&&ffprobe -v error -show_entries "
            "format_tags=title,track,disc -of compact=p=0 b.m4a|tr '|' '\\n'|sort | 0 | "
            "tag:disc=1/3;tag:title=Ünï;tag:track=7/12",
            "cli set --tag TRACKTOTAL= --tag YEAR= b.m4a&&ffprobe -v error -show_entries format_tags=track,date -of "
            "compact=p=0 b.m4a | 0 | tag:track=3",
            "cli number b.m4a a.mp3&&cli show a.mp3 b.m4a|grep Track | 0 | Track 2/12; Track 1/12",
            "cli strip-all b.m4a;ffprobe -v error -show_entries format_tags=title b.m4a|grep title;cli art get "
            "--output x.jpg b.m4a | 1 |  | b.m4a: The file has no cover art",
            "/usr/bin/python3 -c 'from mutagen.id3 import "
            "*;t=ID3(\"a.mp3\");t[\"TPE1\"].text=[\"A\",\"B\"];t.save()';"
            "cli show --json a.mp3|grep -o '\"ARTIST\":[^]]*]';cli show a.mp3|grep -A1 Artist;cli set --tag ARTIST=C "
            "a.mp3;cli show a.mp3|grep -A1 Artist|head -1 | 0 | \"ARTIST\":[\"A\",\"B\"]; Artist A; B; Artist C",
            "cli strip-unsupported b.m4a a.mp3&&cli art get --output - b.m4a|cmp - cover.jpg | 0",
            "cli art set --image cover.png a.mp3 b.m4a&&for f in *.m??;do cli art get --output - $f 2>/dev/null|cmp "
            "-s - cover.png&&echo $f;done | 1 | a.mp3;b.m4a",
            "cli art set --image b.m4a a.mp3 | 1 |  | b.m4a: There is no picture in a known format",
            "cli art set --image cover.png cover.jpg | 1 |  | cover.jpg: Cover art is kept in MP3 and M4A files that "
            "are named so",
            "cli art get --convert --output x.PNG b.m4a&&ffprobe -v error -show_entries stream=codec_name,width -of "
            "csv=p=0 x.PNG | 0 | png,48",
            "cli art get --convert --output - b.m4a 2>&1|head -1 | 0 | sonvika-cli: With --convert the name of IMAGE "
            "must "
            "end with .jpeg, .jpg, .png, .tiff, .tif, .gif, .bmp.",
            "cli art get --convert --output x.jpeg b.m4a&&cmp x.jpeg cover.jpg | 0",
            "cli art get --output a.mp3 b.m4a | 1 |  | b.m4a: Cover art is not "
            "written over recordings: a.mp3",
            "cp a.mp3 n;for f in a.mp3 n link.jpg;do ln -sf a.mp3 link.jpg;cli art get --output $f b.m4a;cp b.m4a m;"
            "cli art get --output m m;done 2>&1|cut -d: -f3;cmp a.mp3 n&&cmp b.m4a m | 0 | a.mp3; m; n; m; link.jpg; "
            "m",
            "mkfifo p;cat p>x&cli art get --output p b.m4a;wait;cmp x cover.jpg;test -p p | 0",
            "cli art get --output /dev/full b.m4a | 1 |  | b.m4a: /dev/full: No space left on device",
            "printf '\\x89PNG\\r\\n\\x1a\\n\\0\\0\\0\\rIHDR\\0\\0\\xff\\xff\\0\\0\\xff\\xff'>h.png;cli art set "
            "--image h.png a.mp3&&cli art get --convert --output x.bmp a.mp3 | 1 |  | a.mp3: The cover art can't be "
            "converted",
            "cli art get --output none/x.jpg b.m4a | 1 |  | b.m4a: none/x.jpg: No such file or directory",
            "cli art remove b.m4a;cli show --json b.m4a|grep -o '\"art\":null' | 0 | \"art\":null",
            "cli show --json b.m4a 'c d.mp3'|python3 -c 'import hashlib,json,sys;a,c=json.load(sys.stdin);"
            "d=hashlib.sha256(open(\"cover.jpg\",\"rb\").read()).hexdigest();print(a[\"art\"].pop(\"sha256\")==d,"
            "a[\"art\"],a[\"chapters\"],c[\"art\"],c[\"chapters\"])' | 0 | True {'bytes': 1043, 'format': 'jpeg', "
            "'height': 48, 'width': 48} None None [{'start_ms': 0, 'title': 'Intro'}, {'start_ms': 900, "
            "'title': 'Verse'}]",
            "cli chapters set --chapter Eins@5 --chapter 'Zwei 2@070' --chapter @2147483647 a.mp3&&cli chapters get "
            "a.mp3 | 0 | "
            "5>Eins;70>Zwei 2;2147483647",
            "cli chapters set --chapter A a.mp3 2>&1|head -1 | 0 | sonvika-cli: --chapter needs TITLE@MS with MS "
            "from 0 to "
            "2147483647, not 'A'.",
            "cli chapters set 'c d.mp3'&&cli chapters get --json 'c d.mp3' | 0 | []",
            "cli chapters get b.m4a | 1 |  | b.m4a: Only MP3 files can have chapters",
            "cli rename --token Track --token ' ' --token Title --dry-run b.m4a | 0 | b.m4a -> 03 Blue Window.m4a",
            "cli rename --token Title a.mp3 b.m4a 'c d.mp3'&&ls *.m?? | 0 | Blue Window.m4a;Blue Window.mp3;Two "
            "Chapters.mp3",
            "mkdir AC;ln -s .. up;ln -s AC in;for t in AC/DC ../x /x up/x in/.x .x $'x\\ny';do cli set --tag "
            "TITLE=\"$t\" b.m4a;cli rename --dry-run --token Title b.m4a 2>&1;done | 1 | b.m4a -> AC/DC.m4a>Goes "
            "into the "
            "folder \"AC\";b.m4a: The name leads out of the folder;b.m4a: The name leads out of the folder;b.m4a: "
            "The "
            "name leads out of the folder;b.m4a -> in/.x.m4a>Goes into the folder \"in\"; a dot in front hides "
            "it;b.m4a "
            "-> .x.m4a>Begins with a dot, which hides it;b.m4a: A tag brings a line break into the name",
            "ln -s .. up;cli set --tag TITLE=../y a.mp3;cli set --tag TITLE=$'y\\ny' b.m4a;cli rename --token Title "
            "a.mp3 "
            "b.m4a;cli rename --token up/y a.mp3;cli rename --token $'y\\ny' a.mp3;ls y* ../y* 2>/dev/null | 2 | "
            "y;y.mp3 "
            "| a.mp3: The name leads out of the folder;b.m4a: A tag brings a line break into the name;a.mp3: The "
            "name "
            "leads out of the folder",
            "cli rename --token x b.m4a a.mp3 'c d.mp3';ls *.m?? | 0 | c d.mp3;x.m4a;x.mp3 | c d.mp3: File exists",
            "readelf -d $(which sonvika-cli)|grep -oE 'libQt6(Core|Gui|Widgets)' | 0 | libQt6Core",
            "cli rename b.m4a&&ls *.m4a | 0 | 03 - Blue Window - First Light - 2001.m4a",
            "mkdir -p n;cp a.mp3 n/x;cp b.m4a n/y;cli type n/? a.mp3;cli type --content b.m4a cover.png | 1 | n/x: "
            "mp3;n/y: m4a;a.mp3: mp3;b.m4a: m4a | cover.png: This is no sound file of a known kind",
            "mkdir d;for i in 10 9 .8;do cp a.mp3 d/$i.mp3;done;cp a.mp3 d/UP.MP3;cli show d d/9.mp3 ./d//9.mp3|grep "
            "mp3$ | 0 | d/9.mp3; Type mp3;d/10.mp3; Type mp3",
            "printf 'a.mp3\\n\\nb.m4a'>l;printf 'c d.mp3\\0'|cli show --files-from l - |grep ^[a-z] | 0 | c "
            "d.mp3;a.mp3;b.m4a",
            "cli show --files-from gone a.mp3|head -1 | 0 | a.mp3 | gone: No such file or directory",
            "cp a.mp3 ./--all.mp3;cli set --tag ARTIST=Dash -- --all.mp3&&cli show ./--all.mp3|grep Artist | 0 | "
            "Artist Dash",
            "cli set --tag COMMENT=$'a\\e[31m\\nb' a.mp3;cli show a.mp3|grep -A1 Comment | 0 | Comment a␛[31m; b",
            "cp a.mp3 $'\\e[1m.mp3';cli type $'\\e[1m.mp3';cli $'x\\e\\ny' | 2 | ␛[1m.mp3: mp3 | sonvika-cli: There "
            "is no command 'x␛␊y'.;Try 'sonvika-cli --help'.",
            "mkdir -p r/s;ln -s r/s l;cp a.mp3 r/a.mp3;cli type a.mp3 ./a.mp3 l/../a.mp3 r//a.mp3 | 0 | a.mp3: "
            "mp3;l/../a.mp3: mp3",
            "mkfifo q;timeout 60 sonvika-cli type q a.mp3 | 1 | a.mp3: mp3 | q: This is no file",
            "mkdir $'\\xe9';cp a.mp3 $'\\xe9/x.mp3';cli rename --token y $'\\xe9/x.mp3'&&ls $'\\xe9';rm -r $'\\xe9' "
            "| 0 | y.mp3",
            "cli show a.mp3 >/dev/full | 1 |  | standard output: No space left on device",
            "cli show a.mp3 >&- | 1 |  | standard output: Bad file descriptor",
            "cp a.mp3 z.mp3;cli set --tag TITLE=x z.mp3 gone >&- 2>&-;cli show z.mp3|grep Title | 0 | Title x",
            "cli set --tag COMMENT=$(head -c 120000 /dev/zero|tr '\\0' x) *.m??;cli show --json *.m??|head "
            "-c1;s=${PIPESTATUS[0]};echo;echo $s | 0 | [;1",
            "cli art set --image cover.png a.mp3;for c in 'set --tag TITLE=x' number strip-unsupported strip-all "
            "'art "
            "remove' 'art set --image cover.jpg' 'chapters set';do for m in 444 400 440 404 4411;do cp -f a.mp3 "
            "m.mp3;"
            "chmod $m m.mp3;cli $c m.mp3;stat -c %a m.mp3;done|paste -sd,;done|uniq -c | 0 | 7 644,600,640,604,4611",
            "cp a.mp3 n;(ulimit -f 8;cli set --tag COMMENT=$(head -c 99999 /dev/zero|tr '\\0' x) a.mp3);echo $?;cmp "
            "a.mp3 n&&find . -name '.sonvika*' -o -name '*.undo' | 0 | 1 | a.mp3: File too large",
            "script -qec 'NO_COLOR=1 sonvika-cli show a.mp3' /dev/null|grep -c $'\\e';script -qec 'TERM=xterm "
            "sonvika-cli show a.mp3' /dev/null|head -1|cut -c2-4 | 0 | 0;[1m",
        });
    }
    void runs()
    {
        const auto [text, status, output, error] = row<4>();
        Script script;
        QVERIFY(script.run(text));
        QCOMPARE(onOneLine(script.process.readAllStandardError()), error);
        QCOMPARE(onOneLine(script.process.readAllStandardOutput()), output);
        QCOMPARE(script.process.exitCode(), status.toInt());
    }

    // script, after a change of h.mp3 was cut short | exit status | standard output | standard error
    void seesAfterInterruptedChanges_data()
    {
        addRows({
            "cli show h.mp3|grep Title;cmp h.mp3 before;cli recover;cli recover --json | 0 | Title Blue Window;[]",
            "cli recover&&cmp h.mp3 before | 0",
            "truncate -s -500 h.mp3;cli type a.mp3 | 0 | a.mp3: mp3 | h.mp3: an interrupted change could not be "
            "taken "
            "back: The file has been changed since (see sonvika-cli recover)",
            "rm h.mp3;cli type gone | 1 |  | gone: No such file or directory;h.mp3: an interrupted change could not "
            "be "
            "taken back: The file is not there (see sonvika-cli recover)",
            "rm h.mp3;cli recover>x;echo $?;cut -f2,3 x;cli recover --restore $(cut -f1 x) 2>&1|cut -d: -f2;cli "
            "recover|cmp x - | 0 | 1;The file is not there>h.mp3; No such file or directory",
            "truncate -s -500 h.mp3;cli recover --restore $(cli recover|cut -f1)&&cli recover&&cli show 'h "
            "(restored).mp3'|grep Title | 0 | h (restored).mp3; Title Blue Window",
            "echo>>h.mp3;cp h.mp3 x;cli recover --forget $(cli recover|cut -f1) 0-0||cli recover&&cmp h.mp3 x | 0 |  "
            "| "
            "0-0: No such change is left",
            "rm h.mp3;cli recover --json|python3 -c 'import json,sys;[c]=json.load(sys.stdin);print(*sorted(c),"
            "c[\"reason\"])' | 0 | id path reason missing",
        });
    }
    void seesAfterInterruptedChanges()
    {
        const auto [text, status, output, error] = row<4>();
        Script script;
        qputenv("XDG_STATE_HOME", QFile::encodeName(script.folder.path(u"state"_qs)));
        const auto file = cutShort(roomyCopy(script.folder, u"v24.mp3"_qs, u"h.mp3"_qs));
        ScratchFolder::write(script.folder.path(u"before"_qs), file.before);
        QVERIFY(script.run(text));
        const QString place = script.folder.path({}) + u'/';
        QCOMPARE(onOneLine(script.process.readAllStandardError()).remove(place), error);
        QCOMPARE(onOneLine(script.process.readAllStandardOutput()).remove(place), output);
        QCOMPARE(script.process.exitCode(), status.toInt());
    }

    void namesOfAnyBytesComeBackFromJson()
    {
        // Changed by the names that another parser reads out of our JSON, and read back by another reader of tags.
        Script script;
        QVERIFY(script.run(
            u"rm b.m4a 'c d.mp3';for n in $'\\xff\\xc3' $' q\"\\'\\\\' $'line\\nbreak' -dash ö;do cp a.mp3 "
            "\"./$n.mp3\";done;cli show --json .>all.json"_qs));
        ScratchFolder::write(script.folder.path(u"change.py"_qs), R"(
import base64, json, os, subprocess, sys
from mutagen.id3 import ID3
files = json.load(open('all.json'))
names = [base64.b64decode(f['path_base64']) if 'path_base64' in f else f['path'].encode() for f in files]
assert sorted(os.path.basename(n) for n in names) == sorted(n for n in os.listdir(b'.') if n.endswith(b'.mp3')), names
assert len(names) == 6 and sum('path_base64' in f for f in files) == 1
assert all(f['tags']['TITLE'] == 'Blue Window' and f['type'] == 'mp3' and f['chapters'] == [] for f in files)
listed = b'\0'.join(names)
subprocess.run(['sonvika-cli', 'set', '--tag', 'TITLE=New', '-'], input=listed, check=True)
print([str(ID3(n)['TIT2']) for n in names])
)");
        QVERIFY(script.run(u"python3 change.py;rm -f ./*.mp3"_qs));
        QCOMPARE(onOneLine(script.process.readAllStandardOutput() + script.process.readAllStandardError()),
                 u"['New', 'New', 'New', 'New', 'New', 'New']"_qs);
    }

    void whatCannotBeWrittenIsReportedAndTheRestGoesOn_data()
    {
        addRows({"set --tag TITLE=x", "number", "strip-unsupported", "strip-all", "art remove",
                 "art set --image cover.png", "rename --token x"});
    }
    void whatCannotBeWrittenIsReportedAndTheRestGoesOn()
    {
        const auto [command] = row<1>();
        Script script;
        QVERIFY(QDir().mkdir(script.folder.path(u"locked"_qs)));
        const QString locked = script.folder.copy(u"two-pictures.mp3"_qs, u"locked/l.mp3"_qs);
        const QString open = script.folder.copy(u"two-pictures.mp3"_qs, u"z.mp3"_qs);
        QVERIFY(script.run(u"chmod 444 locked/l.mp3;chmod 555 locked;mkdir state;chmod 555 state;"
                           "cli %1 locked/l.mp3 z.mp3;s=$?;chmod 755 locked state;exit $s"_qs.arg(command)));
        // Permissions that the owner may mend are mended by some, but the folder takes no new file.
        QCOMPARE(onOneLine(script.process.readAllStandardError()), u"locked/l.mp3: Permission denied"_qs);
        QCOMPARE(script.process.exitCode(), 1);
        QCOMPARE(ScratchFolder::contents(locked), ScratchFolder::fixture(u"two-pictures.mp3"_qs));
        QVERIFY(!QFile::exists(open)
                || ScratchFolder::contents(open) != ScratchFolder::fixture(u"two-pictures.mp3"_qs));
    }

    void aSignalStopsBetweenTwoFiles()
    {
        constexpr int count = 4000;
        Script script;
        QVERIFY(script.run(u"for n in {1..%1};do ln a.mp3 x$n.mp3;echo x$n.mp3;done>names"_qs.arg(count)));
        script.start(u"exec sonvika-cli show --files-from names --json"_qs);
        QVERIFY(script.process.waitForReadyRead());
        ::kill(static_cast<pid_t>(script.process.processId()), SIGINT);
        QVERIFY(script.process.waitForFinished());
        const QByteArray output = script.process.readAllStandardOutput();
        const auto shown = output.count("\"path\"");
        QCOMPARE(script.process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(script.process.exitCode(), 128 + SIGINT);
        QVERIFY2(shown > 0 && shown < count, qPrintable(QString::number(shown)));
        QVERIFY(output.endsWith("\n]\n") && script.process.readAllStandardError().isEmpty());
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"

#include "cli/CommandLine.h"
#include "cli/HelpTexts.h"
#include "naming/FileNameFormat.h"
#include "platform/PathBytes.h"
#include "support/Rows.h"
#include "support/ScratchFolder.h"

#include <QProcess>
#include <QRegularExpression>

namespace {

QString sourceFile(const QString& path)
{
    return QString::fromUtf8(ScratchFolder::contents(QStringLiteral(SOURCE_DIR "/data/") + path));
}

/// The words of a line; "_" stands for a space and "''" for an empty word.
QStringList words(const QString& line)
{
    return line.split(u' ', Qt::SkipEmptyParts).replaceInStrings(u"_"_qs, u" "_qs).replaceInStrings(u"''"_qs, u""_qs);
}

/// The words that the bash completion offers after a line; its last word is the one to complete.
QStringList bashCompletions(const QString& line)
{
    const QString script =
        u"source '" SOURCE_DIR "/data/completions/sonvika-cli.bash'; COMP_WORDS=(sonvika-cli \"$@\");"
        "COMP_CWORD=$#; _sonvika_cli sonvika-cli; printf '%s\\n' \"${COMPREPLY[@]}\""_qs;
    QProcess bash;
    bash.start(u"bash"_qs, QStringList{u"--norc"_qs, u"-c"_qs, script, u"bash"_qs} + line.split(u' '));
    bash.waitForFinished();
    return QString::fromUtf8(bash.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

class CommandLineTest : public QObject {
    Q_OBJECT

private slots:
    // command | the rest of the arguments | message
    void refuses_data()
    {
        addRows({" |  | No command was given.",
                 " | --json show f | Unknown option '--json'.",
                 " | shw f | There is no command 'shw'.",
                 " | help shw | There is no command 'shw'.",
                 "art |  | 'art' needs a command of its own.",
                 "art | --json | There is no command 'art --json'.",
                 "show | -- | No FILE was given.",
                 "show | -json f | Unknown option '-json'.",
                 "show | --js f | Unknown option '--js'.",
                 "show | --json=1 f | Unexpected value after '--json'.",
                 "number | --json f | Unknown option '--json'.",
                 "set | f | --tag is missing.",
                 "set | f --tag | Missing value after '--tag'.",
                 "set | --tag A f | --tag needs KEY=VALUE, not 'A'.",
                 "set | --tag =b f | '' is no key: a key is printable ASCII text.",
                 "set | --tag Ä=b f | 'Ä' is no key: a key is printable ASCII text.",
                 "art get | f | --output is missing.",
                 "art get | --output '' f | --output needs the name of a file.",
                 "art get | --output a --output b f | --output can be given only once.",
                 "art get | --output a f g | Exactly one FILE is needed, not 2.",
                 "art get | --output a --files-from f g | Unknown option '--files-from'.",
                 "recover | a | With an ID, --restore or --forget is needed.",
                 "recover | --restore | No ID was given.",
                 "recover | --restore --json a | Only one of --json, --restore and --forget can be given.",
                 "recover | --forget --files-from f | Unknown option '--files-from'.",
                 "chapters get | - | The name of the FILE can't be read from standard input here.",
                 "chapters set | --chapter A@B@1 f | The title of a chapter can't hold \"@\": 'A@B'."});
    }
    void refuses()
    {
        const auto [command, rest, message] = row<3>();
        const QString topic = command.isEmpty() ? QString() : command + u' ';
        try {
            CommandLine::parse(words(topic + rest));
            QFAIL("understood");
        } catch (const UsageError& error) {
            QCOMPARE(error.message, message);
            QCOMPARE(error.hint, u"Try 'sonvika-cli %1--help'."_qs.arg(topic));
        }
    }

    void namesMayHoldAnyBytesButTagsAreTextAndTimesNumbers()
    {
        const QString odd = PathBytes::decode("a\xff\x80.mp3");
        const auto line = CommandLine::parse(words(u"art set --image %1 %1 --files-from=%1"_qs.arg(odd)));
        QCOMPARE(line.files + line.fileLists + QStringList(line.image), QStringList(3, odd));
        for (const auto& bad : {u"set --tag=A="_qs + odd, u"chapters set --chapter=%1@0"_qs.arg(odd),
                                u"chapters set --chapter A"_qs, u"chapters set --chapter A@"_qs,
                                u"chapters set --chapter A@+1"_qs, u"chapters set --chapter A@2147483648"_qs})
            QVERIFY_THROWS_EXCEPTION(UsageError, CommandLine::parse(words(bad + u" f"_qs)));
    }

    void everyCommandAndOptionIsToldEverywhere()
    {
        const QString man = sourceFile(u"man/sonvika-cli.1"_qs).remove(u'\\');
        const QString manShared = man.section(u"\n.SH OPTIONS\n"_qs, 1).section(u"\n.S"_qs, 0, 0);
        QString zsh = sourceFile(u"completions/_sonvika-cli"_qs);
        for (const auto& name : {u"shared"_qs, u"from"_qs})
            zsh.replace(u'$' + name, zsh.section(u"\n  "_qs + name + u'=', 1, 1).section(u'\n', 0, 0));
        for (const auto& name : CommandLine::commandNames()) {
            const QString function = u"\n_sonvika-cli_"_qs + QString(name).replace(u' ', u'_') + u"() {"_qs;
            const QStringList texts{HelpTexts::about(name),
                                    manShared + man.section(u"\n.SS "_qs + name + u'\n', 1).section(u"\n.S"_qs, 0, 0),
                                    zsh.section(function, 1).section(u"\n}"_qs, 0, 0)};
            QStringList known = CommandLine::optionsOf(name);
            for (const auto& option : std::as_const(known)) {
                const QRegularExpression whole(u"(?<![-\\w])%1(?![-\\w])"_qs.arg(option));
                for (const auto& text : texts)
                    QVERIFY2(text.contains(whole), qPrintable(name + u' ' + option + u' ' + text));
            }
            QStringList offered = bashCompletions(name + u" -"_qs);
            known.sort();
            offered.sort();
            QCOMPARE(offered, known);
            QVERIFY(HelpTexts::about({}).contains(name));
        }
    }

    void fieldTitlesAreToldEverywhere()
    {
        const QStringList texts{HelpTexts::about(u"rename"_qs), sourceFile(u"completions/_sonvika-cli"_qs),
                                sourceFile(u"man/sonvika-cli.1"_qs),
                                bashCompletions(u"rename --token "_qs).join(u'\n').remove(u'\\')};
        for (const auto& title : FileNameFormat::sortedKeys()) {
            for (const auto& text : texts)
                QVERIFY2(text.contains(title), qPrintable(title + text));
        }
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"

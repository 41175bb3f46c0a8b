#include "cli/CommandLine.h"
#include "cli/HelpTexts.h"
#include "naming/FileNameFormat.h"
#include "platform/PathBytes.h"
#include "support/Rows.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

namespace {

QString sourceFile(const char* path)
{
    QFile file(QStringLiteral(SOURCE_DIR "/data/") + QLatin1String(path));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The words of a line; "_" stands for a space and "''" for an empty word.
QStringList words(const QString& line)
{
    QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (auto& word : words)
        word = word == QLatin1String("''") ? QString() : word.replace(QLatin1Char('_'), QLatin1Char(' '));
    return words;
}

QString text(const CommandLine& line)
{
    using Command = CommandLine::Command;
    if (line.command == Command::Help)
        return line.help.section(QLatin1Char('\n'), 0, 0).replace(QStringLiteral("…"), QStringLiteral(".."));
    const int index = static_cast<int>(line.command) - static_cast<int>(Command::Show);
    QStringList parts{index < 0 ? QStringLiteral("version") : CommandLine::commandNames().value(index)};
    for (const auto& [isSet, name] : {std::pair{line.json, "json"}, std::pair{line.convert, "convert"},
                                      std::pair{line.dryRun, "dry-run"}, std::pair{line.content, "content"}}) {
        if (isSet)
            parts += QLatin1String(name);
    }
    for (const auto& edit : line.edits)
        parts += edit.key + QLatin1Char('=') + edit.value;
    for (const auto& [name, values] :
         {std::pair{"chapter", line.chapters}, std::pair{"token", line.tokens}, std::pair{"from", line.fileLists}}) {
        for (const auto& value : values)
            parts += QLatin1String(name) + QLatin1Char(':') + value;
    }
    if (!line.image.isEmpty())
        parts += QStringLiteral("image:") + line.image;
    return (parts + line.files).join(QLatin1Char(';'));
}

/// The words that the bash completion offers after a line; its last word is the one to complete.
QStringList bashCompletions(const QString& line)
{
    const QString script = QStringLiteral(
        "source '" SOURCE_DIR "/data/completions/sonvika-cli.bash'; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); "
        "_sonvika_cli sonvika-cli; printf '%s\\n' \"${COMPREPLY[@]}\"");
    QProcess bash;
    bash.start(QStringLiteral("bash"), QStringList{QStringLiteral("--norc"), QStringLiteral("-c"), script,
                                                   QStringLiteral("bash"), QStringLiteral("sonvika-cli")}
                                           + line.split(QLatin1Char(' ')));
    bash.waitForFinished();
    return QString::fromUtf8(bash.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// What stands between the first line that @p start matches and the next that @p end matches.
QString section(const QString& whole, const QString& start, const QString& end)
{
    const auto options = QRegularExpression::MultilineOption;
    const auto from = QRegularExpression(start, options).match(whole).capturedEnd();
    const auto to = QRegularExpression(end, options).match(whole, std::max<qsizetype>(from, 0)).capturedStart();
    return from < 0 ? QString() : whole.mid(from, to < 0 ? -1 : to - from);
}

bool hasOption(const QString& whole, const QString& option)
{
    return whole.contains(QRegularExpression(QStringLiteral("(?<![-\\w])%1(?![-\\w])").arg(option)));
}

} // namespace

class CommandLineTest : public QObject {
    Q_OBJECT

private slots:
    // arguments | what they are understood as
    void understands_data()
    {
        addRows({"--version | version",
                 "--help | Usage: sonvika-cli COMMAND [OPTION ..] FILE ..",
                 "-h | Usage: sonvika-cli COMMAND [OPTION ..] FILE ..",
                 "help | Usage: sonvika-cli COMMAND [OPTION ..] FILE ..",
                 "help help | Usage: sonvika-cli COMMAND [OPTION ..] FILE ..",
                 "help art set | Usage: sonvika-cli art set --image IMAGE FILE ..",
                 "help art | Usage: sonvika-cli art get --output IMAGE [--convert] FILE",
                 "art -h | Usage: sonvika-cli art get --output IMAGE [--convert] FILE",
                 "number -h | Usage: sonvika-cli number FILE ..",
                 "set --tag A=b --help | Usage: sonvika-cli set --tag KEY=VALUE [--tag ..] FILE ..",
                 "show a.mp3 | show;a.mp3",
                 "show a --json b | show;json;a;b",
                 "show -- --json -h | show;--json;-h",
                 "show - -- - | show;-;-",
                 "show --files-from - --files-from=x y | show;from:-;from:x;y",
                 "number --files-from list | number;from:list",
                 "strip-all a | strip-all;a",
                 "set --tag title=a=b --tag=ARTIST= --tag x_y=-z f | set;TITLE=a=b;ARTIST=;X Y=-z;f",
                 "set f --tag TrackNum=3 | set;TRACKNUM=3;f",
                 "art get --output - f | art get;image:-;f",
                 "art get --convert --output a/b.PnG f | art get;convert;image:a/b.PnG;f",
                 "art set --image --json f | art set;image:--json;f",
                 "art remove a b | art remove;a;b",
                 "chapters get --json f | chapters get;json;f",
                 "chapters set f | chapters set;f",
                 "chapters set --chapter A_b@007 --chapter @2147483647 f "
                 "| chapters set;chapter:A b@7;chapter:@2147483647;f",
                 "rename f | rename;f",
                 "rename --token Track --token -- --token - --dry-run f "
                 "| rename;dry-run;token:Track;token:--;token:-;f",
                 "type --content f | type;content;f"});
    }
    void understands()
    {
        const auto [arguments, expected] = row<2>();
        QCOMPARE(text(CommandLine::parse(words(arguments))), expected);
    }

    // arguments | message | the words before "--help" in the hint
    void refuses_data()
    {
        addRows({" | No command was given. | ",
                 "--json show f | Unknown option '--json'. | ",
                 "shw f | There is no command 'shw'. | ",
                 "help shw | There is no command 'shw'. | ",
                 "art | 'art' needs a command of its own. | art ",
                 "art --json | There is no command 'art --json'. | art ",
                 "show | No FILE was given. | show ",
                 "show -- | No FILE was given. | show ",
                 "show -json f | Unknown option '-json'. | show ",
                 "show --js f | Unknown option '--js'. | show ",
                 "show --json=1 f | Unexpected value after '--json'. | show ",
                 "number --json f | Unknown option '--json'. | number ",
                 "set --tagg=A=b f | Unknown option '--tagg'. | set ",
                 "set f | --tag is missing. | set ",
                 "set f --tag | Missing value after '--tag'. | set ",
                 "set --tag A f | --tag needs KEY=VALUE, not 'A'. | set ",
                 "set --tag =b f | '' is no key: a key is printable ASCII text. | set ",
                 "set --tag Ä=b f | 'Ä' is no key: a key is printable ASCII text. | set ",
                 "art get f | --output is missing. | art get ",
                 "art get --output '' f | --output needs the name of a file. | art get ",
                 "art get --output a --output b f | --output can be given only once. | art get ",
                 "art get --output a f g | Exactly one FILE is needed, not 2. | art get ",
                 "art get --output a --files-from f g | Unknown option '--files-from'. | art get ",
                 "art get --convert --output a.webp f | With --convert the name of IMAGE must end with "
                 ".jpeg, .jpg, .png, .tiff, .gif, .bmp. | art get ",
                 "art get --convert --output - f | With --convert the name of IMAGE must end with "
                 ".jpeg, .jpg, .png, .tiff, .gif, .bmp. | art get ",
                 "art set f | --image is missing. | art set ",
                 "chapters get - | The name of the FILE can't be read from standard input here. | chapters get ",
                 "chapters set --chapter A f "
                 "| --chapter needs TITLE@MS with MS from 0 to 2147483647, not 'A'. | chapters set ",
                 "chapters set --chapter A@ f "
                 "| --chapter needs TITLE@MS with MS from 0 to 2147483647, not 'A@'. | chapters set ",
                 "chapters set --chapter A@+1 f "
                 "| --chapter needs TITLE@MS with MS from 0 to 2147483647, not 'A@+1'. | chapters set ",
                 "chapters set --chapter A@2147483648 f "
                 "| --chapter needs TITLE@MS with MS from 0 to 2147483647, not 'A@2147483648'. | chapters set ",
                 "chapters set --chapter A@B@1 f | The title of a chapter can't hold \"@\": 'A@B'. | chapters set "});
    }
    void refuses()
    {
        const auto [arguments, message, topic] = row<3>();
        try {
            const auto line = CommandLine::parse(words(arguments));
            QFAIL(qPrintable(text(line)));
        } catch (const UsageError& error) {
            QCOMPARE(error.message, message);
            QCOMPARE(error.hint, QStringLiteral("Try 'sonvika-cli %1--help'.").arg(topic));
        }
    }

    void namesMayHoldAnyBytesButTagsAreText()
    {
        const QString odd = PathBytes::decode("a\xff\x80.mp3");
        const auto line = CommandLine::parse({QStringLiteral("art"), QStringLiteral("set"), QStringLiteral("--image"),
                                              odd, odd, QStringLiteral("--files-from=") + odd});
        QCOMPARE(line.files, QStringList{odd});
        QCOMPARE(line.image, odd);
        QCOMPARE(line.fileLists, QStringList{odd});
        for (const char* bad : {"set --tag=A=%1 f", "chapters set --chapter=%1@0 f"}) {
            const QStringList arguments = QString::fromLatin1(bad).arg(odd).split(QLatin1Char(' '));
            QVERIFY_THROWS_EXCEPTION(UsageError, CommandLine::parse(arguments));
        }
    }

    void everyCommandAndOptionIsToldEverywhere()
    {
        const QString man = sourceFile("man/sonvika-cli.1").remove(QLatin1Char('\\'));
        const QString zsh = sourceFile("completions/_sonvika-cli");
        const QString manShared = section(man, QStringLiteral("^\\.SH OPTIONS$"), QStringLiteral("^\\.SH"));
        const QString zshShared = section(zsh, QStringLiteral("^  shared="), QStringLiteral("$"));
        const QString zshFrom = section(zsh, QStringLiteral("^  from="), QStringLiteral("$"));
        for (const auto& name : CommandLine::commandNames()) {
            const QString function = QString(name).replace(QLatin1Char(' '), QLatin1Char('_'));
            const QList<std::pair<const char*, QString>> texts{
                {"help", HelpTexts::about(name)},
                {"manual", manShared + section(man, QStringLiteral("^\\.SS %1$").arg(name), QStringLiteral("^\\.S"))},
                {"zsh", section(zsh, QStringLiteral("^_sonvika-cli_%1\\(\\)").arg(function), QStringLiteral("^\\}"))
                            .replace(QStringLiteral("$shared"), zshShared)
                            .replace(QStringLiteral("$from"), zshFrom)}};
            QStringList known = CommandLine::optionsOf(name);
            for (const auto& option : std::as_const(known)) {
                for (const auto& [where, text] : texts)
                    QVERIFY2(hasOption(text, option), qPrintable(QLatin1String(where) + name + option));
            }
            QStringList offered = bashCompletions(name + QStringLiteral(" -"));
            known.sort();
            offered.sort();
            QCOMPARE(offered, known);
            QVERIFY(HelpTexts::about({}).contains(name));
        }
    }

    void helpFitsTheTerminal()
    {
        for (const auto& name : CommandLine::commandNames() + QStringList{QString(), QStringLiteral("art")}) {
            const QString help = HelpTexts::about(name);
            QVERIFY(help.endsWith(QLatin1Char('\n')));
            for (const auto& line : help.split(QLatin1Char('\n')))
                QVERIFY2(line.size() <= 79, qPrintable(line));
        }
    }

    void fieldTitlesAreToldEverywhere()
    {
        const QStringList offered = bashCompletions(QStringLiteral("rename --token "));
        const QString zsh = sourceFile("completions/_sonvika-cli");
        const QString man = sourceFile("man/sonvika-cli.1");
        for (const auto& title : FileNameFormat::sortedKeys()) {
            QVERIFY2(offered.contains(QString(title).replace(QLatin1Char(' '), QStringLiteral("\\ "))),
                     qPrintable(title));
            QVERIFY2(HelpTexts::about(QStringLiteral("rename")).contains(title), qPrintable(title));
            QVERIFY2(zsh.contains(title) && man.contains(title), qPrintable(title));
        }
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)
#include "CommandLineTest.moc"

#include "cli/CommandLine.h"

#include "artwork/ImageFormats.h"
#include "cli/HelpTexts.h"

#include <QCommandLineParser>

#include <algorithm>

namespace {

using Command = CommandLine::Command;

enum class Operands { Files, OneFile, Ids };

struct CommandForm {
    QString name;
    Command command;
    Operands operands;
    QStringList options;
};

struct OptionForm {
    QString name;
    /// Empty for a switch.
    QString valueName;
    bool isRepeatable = false;
};

const QString json = QStringLiteral("json");
const QString convert = QStringLiteral("convert");
const QString dryRun = QStringLiteral("dry-run");
const QString content = QStringLiteral("content");
const QString tag = QStringLiteral("tag");
const QString chapter = QStringLiteral("chapter");
const QString token = QStringLiteral("token");
const QString output = QStringLiteral("output");
const QString image = QStringLiteral("image");
const QString restore = QStringLiteral("restore");
const QString forget = QStringLiteral("forget");
const QString filesFrom = QStringLiteral("files-from");
const QString helpOption = QStringLiteral("help");

const QList<OptionForm>& optionForms()
{
    static const QList<OptionForm> forms{
        {json, {}},
        {convert, {}},
        {dryRun, {}},
        {content, {}},
        {tag, QStringLiteral("KEY=VALUE"), true},
        {chapter, QStringLiteral("TITLE@MS"), true},
        {token, QStringLiteral("TEXT"), true},
        {output, QStringLiteral("IMAGE")},
        {image, QStringLiteral("IMAGE")},
        {restore, {}},
        {forget, {}},
        {filesFrom, QStringLiteral("FILE"), true},
    };
    return forms;
}

const QList<CommandForm>& commandForms()
{
    static const QList<CommandForm> forms{
        {QStringLiteral("show"), Command::Show, Operands::Files, {json}},
        {QStringLiteral("set"), Command::Set, Operands::Files, {tag}},
        {QStringLiteral("number"), Command::Number, Operands::Files, {}},
        {QStringLiteral("strip-unsupported"), Command::StripUnsupported, Operands::Files, {}},
        {QStringLiteral("strip-all"), Command::StripAll, Operands::Files, {}},
        {QStringLiteral("art get"), Command::ArtGet, Operands::OneFile, {output, convert}},
        {QStringLiteral("art set"), Command::ArtSet, Operands::Files, {image}},
        {QStringLiteral("art remove"), Command::ArtRemove, Operands::Files, {}},
        {QStringLiteral("chapters get"), Command::ChaptersGet, Operands::OneFile, {json}},
        {QStringLiteral("chapters set"), Command::ChaptersSet, Operands::OneFile, {chapter}},
        {QStringLiteral("rename"), Command::Rename, Operands::Files, {token, dryRun}},
        {QStringLiteral("type"), Command::Type, Operands::Files, {content}},
        {QStringLiteral("recover"), Command::Recover, Operands::Ids, {json, restore, forget}},
    };
    return forms;
}

const CommandForm* formFor(const QString& name)
{
    const auto& forms = commandForms();
    const auto found =
        std::find_if(forms.begin(), forms.end(), [&](const CommandForm& form) { return form.name == name; });
    return found == forms.end() ? nullptr : &*found;
}

QList<OptionForm> optionsFor(const CommandForm& form)
{
    QStringList names = form.options;
    if (form.operands == Operands::Files)
        names += filesFrom;
    QList<OptionForm> options;
    std::copy_if(optionForms().begin(), optionForms().end(), std::back_inserter(options),
                 [&](const OptionForm& option) { return names.contains(option.name); });
    return options;
}

bool isHelp(const QString& argument)
{
    return argument == QLatin1String("-h") || argument == QLatin1String("--help");
}

/// @param topic see HelpTexts.
UsageError usageError(const QString& message, const QString& topic = {})
{
    const QString words = topic.isEmpty() ? QString() : topic + QLatin1Char(' ');
    return {message, QStringLiteral("Try 'sonvika-cli %1--help'.").arg(words)};
}

QString quoted(const QString& text)
{
    return QLatin1Char('\'') + text + QLatin1Char('\'');
}

CommandLine helpAbout(const QString& topic)
{
    CommandLine line;
    line.help = HelpTexts::about(topic);
    if (line.help.isNull())
        throw usageError(QStringLiteral("There is no command %1.").arg(quoted(topic)));
    return line;
}

/// The arguments of one command, read by Qt's parser.
class ParsedOptions {
public:
    ParsedOptions(const CommandForm& form, const QStringList& arguments) : form_(form)
    {
        parser_.addOption({{QStringLiteral("h"), helpOption}, QString()});
        for (const auto& option : optionsFor(form))
            parser_.addOption({option.name, QString(), option.valueName});
        if (!parser_.parse(QStringList(form.name) + arguments))
            throw error(problem(arguments));
    }

    UsageError error(const QString& message) const { return usageError(message, form_.name); }
    bool isSet(const QString& option) const { return contains(option) && parser_.isSet(option); }
    QStringList values(const QString& option) const
    {
        return contains(option) ? parser_.values(option) : QStringList();
    }
    QString value(const QString& option) const { return values(option).value(0); }
    QStringList operands() const { return parser_.positionalArguments(); }

    void check() const
    {
        for (const auto& option : optionsFor(form_)) {
            const bool isSingle = !option.valueName.isEmpty() && !option.isRepeatable;
            if (isSingle && values(option.name).size() > 1)
                throw error(QStringLiteral("--%1 can be given only once.").arg(option.name));
            if (isSingle)
                requireValue(option.name);
        }
        if (form_.options.contains(tag) && !isSet(tag))
            throw error(QStringLiteral("--tag is missing."));
        if (form_.operands == Operands::Ids)
            checkIds();
        else
            checkOperands();
    }

private:
    bool contains(const QString& option) const
    {
        const bool isShared = option == helpOption || (option == filesFrom && form_.operands == Operands::Files);
        return isShared || form_.options.contains(option);
    }

    void requireValue(const QString& option) const
    {
        if (!isSet(option))
            throw error(QStringLiteral("--%1 is missing.").arg(option));
        if (value(option).isEmpty())
            throw error(QStringLiteral("--%1 needs the name of a file.").arg(option));
    }

    void checkOperands() const
    {
        if (operands().isEmpty() && !isSet(filesFrom))
            throw error(QStringLiteral("No FILE was given."));
        if (form_.operands == Operands::Files)
            return;
        if (operands().size() > 1)
            throw error(QStringLiteral("Exactly one FILE is needed, not %1.").arg(operands().size()));
        if (operands().first() == QLatin1String("-"))
            throw error(QStringLiteral("The name of the FILE can't be read from standard input here."));
    }

    void checkIds() const
    {
        const bool hasWayOut = isSet(restore) || isSet(forget);
        if (hasWayOut && isSet(json) + isSet(restore) + isSet(forget) > 1)
            throw error(QStringLiteral("Only one of --json, --restore and --forget can be given."));
        if (hasWayOut && operands().isEmpty())
            throw error(QStringLiteral("No ID was given."));
        if (!hasWayOut && !operands().isEmpty())
            throw error(QStringLiteral("With an ID, --restore or --forget is needed."));
    }

    /// The parser takes "-json" for four options; the user is shown what was typed.
    QString problem(const QStringList& arguments) const
    {
        const QString name = parser_.unknownOptionNames().value(0);
        if (name.isEmpty())
            return parser_.errorText();
        for (const auto& argument : arguments) {
            const bool isLong = argument.startsWith(QLatin1String("--"));
            const QString typed = argument.section(QLatin1Char('='), 0, 0);
            if (isLong ? typed == QLatin1String("--") + name : typed.startsWith(u'-') && typed.contains(name))
                return QStringLiteral("Unknown option %1.").arg(quoted(typed));
        }
        return parser_.errorText();
    }

    const CommandForm& form_;
    QCommandLineParser parser_;
};

bool isKey(const QString& text)
{
    return !text.isEmpty() && std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u' ' && c <= u'~'; });
}

QList<FieldEdit> edits(const ParsedOptions& options)
{
    QList<FieldEdit> edits;
    for (const auto& text : options.values(tag)) {
        const auto split = text.indexOf(QLatin1Char('='));
        if (split < 0)
            throw options.error(QStringLiteral("--tag needs KEY=VALUE, not %1.").arg(quoted(text)));
        const QString key = text.left(split);
        if (!isKey(key))
            throw options.error(QStringLiteral("%1 is no key: a key is printable ASCII text.").arg(quoted(key)));
        const QString value = text.mid(split + 1);
        if (!value.isValidUtf16())
            throw options.error(QStringLiteral("The value of %1 is not valid text.").arg(key));
        edits.append({key.toUpper(), value});
    }
    return edits;
}

/// @return -1 when it is no time.
int milliseconds(const QString& text)
{
    const bool isDecimal = std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    bool fits = false;
    const int time = text.toInt(&fits);
    return isDecimal && fits ? time : -1;
}

QStringList chapters(const ParsedOptions& options)
{
    QStringList chapters;
    for (const auto& text : options.values(chapter)) {
        const auto split = text.lastIndexOf(QLatin1Char('@'));
        const int time = milliseconds(text.mid(split + 1));
        const QString title = text.left(std::max<qsizetype>(split, 0));
        if (split < 0 || time < 0)
            throw options.error(
                QStringLiteral("--chapter needs TITLE@MS with MS from 0 to 2147483647, not %1.").arg(quoted(text)));
        if (title.contains(QLatin1Char('@')))
            throw options.error(QStringLiteral("The title of a chapter can't hold \"@\": %1.").arg(quoted(title)));
        if (!title.isValidUtf16())
            throw options.error(QStringLiteral("The title of a chapter is not valid text."));
        chapters += title + QLatin1Char('@') + QString::number(time);
    }
    return chapters;
}

QString imageName(const ParsedOptions& options)
{
    const QString name = options.value(output) + options.value(image);
    if (!options.isSet(convert))
        return name;
    const QString fileName = name.section(QLatin1Char('/'), -1);
    const auto dot = fileName.lastIndexOf(QLatin1Char('.'));
    const QString extension = dot < 0 ? QString() : fileName.mid(dot + 1).toLower();
    QStringList known;
    for (int format = 0; format < ImageFormats::extensions().size(); ++format)
        known += ImageFormats::allowedExtensions(format);
    if (!known.contains(extension))
        throw options.error(
            QStringLiteral("With --convert the name of IMAGE must end with .%1.").arg(known.join(u", .")));
    return name;
}

CommandLine commandLine(const CommandForm& form, const QStringList& arguments)
{
    const ParsedOptions options(form, arguments);
    if (options.isSet(helpOption))
        return helpAbout(form.name);
    options.check();
    CommandLine line;
    line.command = form.command;
    line.json = options.isSet(json);
    line.convert = options.isSet(convert);
    line.dryRun = options.isSet(dryRun);
    line.content = options.isSet(content);
    line.edits = edits(options);
    line.chapters = chapters(options);
    line.tokens = options.values(token);
    line.image = imageName(options);
    if (options.isSet(restore) || options.isSet(forget))
        line.wayOut = options.isSet(restore) ? CommandLine::WayOut::RestoreCopy : CommandLine::WayOut::Forget;
    (form.operands == Operands::Ids ? line.ids : line.files) = options.operands();
    line.ids.removeDuplicates();
    line.fileLists = options.values(filesFrom);
    return line;
}

bool isGroup(const QString& word)
{
    return std::any_of(commandForms().begin(), commandForms().end(),
                       [&](const CommandForm& form) { return form.name.startsWith(word + QLatin1Char(' ')); });
}

CommandLine groupLine(const QString& group, const QStringList& arguments)
{
    if (arguments.isEmpty())
        throw usageError(QStringLiteral("%1 needs a command of its own.").arg(quoted(group)), group);
    if (isHelp(arguments.first()))
        return helpAbout(group);
    const QString name = group + QLatin1Char(' ') + arguments.first();
    if (const CommandForm* form = formFor(name))
        return commandLine(*form, arguments.sliced(1));
    throw usageError(QStringLiteral("There is no command %1.").arg(quoted(name)), group);
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments)
{
    if (arguments.isEmpty())
        throw usageError(QStringLiteral("No command was given."));
    const QString& first = arguments.first();
    const QStringList rest = arguments.sliced(1);
    if (isHelp(first))
        return helpAbout({});
    if (first == helpOption)
        return helpAbout(!rest.isEmpty() && isHelp(rest.first()) ? QString() : rest.join(QLatin1Char(' ')));
    if (first == QLatin1String("--version")) {
        CommandLine line;
        line.command = Command::Version;
        return line;
    }
    if (first.startsWith(QLatin1Char('-')))
        throw usageError(QStringLiteral("Unknown option %1.").arg(quoted(first)));
    if (isGroup(first))
        return groupLine(first, rest);
    if (const CommandForm* form = formFor(first))
        return commandLine(*form, rest);
    throw usageError(QStringLiteral("There is no command %1.").arg(quoted(first)));
}

QStringList CommandLine::commandNames()
{
    QStringList names;
    for (const auto& form : commandForms())
        names += form.name;
    return names;
}

QStringList CommandLine::optionsOf(const QString& commandName)
{
    QStringList names{QStringLiteral("-h"), QStringLiteral("--help")};
    if (const CommandForm* form = formFor(commandName)) {
        for (const auto& option : optionsFor(*form))
            names += QStringLiteral("--") + option.name;
    }
    return names;
}

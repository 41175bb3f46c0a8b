#pragma once

#include "library/FieldEditor.h"

#include <QList>
#include <QString>
#include <QStringList>

/// Arguments that can't be understood, in the words for the user.
struct UsageError {
    /// What is wrong, without an end of line. It may quote an argument, which holds any bytes (see PathBytes).
    QString message;
    /// Where help is found: "Try 'sonvika-cli set --help'."
    QString hint;
};

/// What the user asks sonvika-cli to do.
struct CommandLine {
    enum class Command {
        Help,
        Version,
        Show,
        Set,
        Number,
        StripUnsupported,
        StripAll,
        ArtGet,
        ArtSet,
        ArtRemove,
        ChaptersGet,
        ChaptersSet,
        Rename,
        Type,
        Recover
    };

    Command command = Command::Help;
    /// The text to print for Help, with its last end of line.
    QString help;
    bool json = false;
    bool convert = false;
    bool dryRun = false;
    /// Recover: what to do with the changes whose ids follow.
    enum class WayOut { None, RestoreCopy, Forget };
    WayOut wayOut = WayOut::None;
    /// Type: look at the content even when the name has an extension.
    bool content = false;
    /// Set: in the order given; keys are upper case, values valid text.
    QList<FieldEdit> edits;
    /// ChaptersSet: each as TaglibWrapper takes it, "TITLE@MS".
    QStringList chapters;
    /// Rename: field titles and literal texts; empty stands for the stored format.
    QStringList tokens;
    /// ArtGet: where to write, "-" being standard output. ArtSet: the picture.
    QString image;
    /// The operands as given; "-" stands for the names on standard input. Exactly one, which is no "-", for ArtGet,
    /// ChaptersGet and ChaptersSet; for the others possibly none when there are fileLists.
    QStringList files;
    /// Recover: the ids of changes, each once; none without a way out.
    QStringList ids;
    /// The files, or "-", from which more names are read; their names come after the operands.
    QStringList fileLists;

    /// @param arguments without the program's own name, decoded by PathBytes. Needs a QCoreApplication.
    /// @throws UsageError
    static CommandLine parse(const QStringList& arguments);

    /// The commands as they are typed ("art get"), without help.
    static QStringList commandNames();
    /// The options of a command with their dashes ("--json"), the short one of help included.
    static QStringList optionsOf(const QString& commandName);
};

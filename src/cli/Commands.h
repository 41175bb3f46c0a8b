#pragma once

#include "cli/CommandLine.h"
#include "cli/ErrorLines.h"
#include "cli/ProgressLine.h"
#include "cli/StandardOutput.h"

#include <QStringList>

#include <functional>

class ArrayController;

namespace InterruptedChanges {
class Search;
}

/// Carries out one command line. Files that fail are reported, and the others go on.
class Commands {
public:
    explicit Commands(const CommandLine& line);

    /// @return the exit status: 0 when all was done, 1 when something failed, 128 and the signal's number when a signal
    /// stopped the work between two files.
    int run();

private:
    bool takesOneFile() const;
    void perform(const QStringList& files);
    void tellInterruptedChanges(InterruptedChanges::Search& search);
    void show(const QStringList& files);
    void showType(const QString& path);
    void changeRecords(const QStringList& files);
    void rename(ArrayController& list);
    void getArt(const QString& path);
    void setArt(const QStringList& files);
    void removeArt(const QString& path);
    void getChapters(const QString& path);
    void setChapters(const QString& path);
    void forEach(const QStringList& files, const std::function<void(const QString& path)>& work);
    static bool isToStop();
    int exitStatus();

    const CommandLine& line_;
    ErrorLines errors_;
    StandardOutput output_;
    ProgressLine progress_;
};

#pragma once

#include "model/AudioFile.h"
#include "soak/Hands.h"

#include <QElapsedTimer>
#include <QObject>
#include <QUrl>

#include <map>
#include <string>
#include <vector>

class ArrayController;
class QMainWindow;
class QTableView;

/// Somebody at the program who presses keys and buttons at random for a while, in every window that opens, also while
/// the program works. From time to time the list is emptied, the memory in use noted, and everything opened again.
/// In the end every file is in the list, an edit is in progress, and the program is quit.
class RandomUser : public QObject {
    Q_OBJECT

public:
    /// @param folder holds "music", the files to work on, "pictures", and "saved", where pictures may be saved.
    RandomUser(unsigned int seed, int seconds, QString folder);

    /// To be called when the program is about to be started; goes on by itself.
    void act();
    /// Writes down what the list shows of each file, or showed when the program was quit, and what the engine reads now.
    void writeRecords() const;
    /// Bytes in use, each time that the list was empty.
    const std::vector<qint64>& memory() const { return memory_; }

public slots:
    /// Instead of the program that would show it.
    void noteAddress(const QUrl&) { ++counts_["address opened"]; }

private:
    enum class Phase { Filling, Using, Emptying, Ending, Over };

    bool findProgram();
    void actInFront();
    void whileWorking();
    bool goOnDragging();
    void inMenu(QWidget& popup);
    void inOtherWindow(QWidget& window);
    void inMainWindow();
    void useMenuOrShortcut();
    void useList();
    void editField();
    void useArt();
    void drag();
    void empty();
    void fill();
    void end();

    Chance chance_;
    qint64 milliseconds_;
    QString folder_;
    QMainWindow* window_ = nullptr;
    QTableView* table_ = nullptr;
    ArrayController* list_ = nullptr;
    QElapsedTimer time_;
    qint64 nextRest_ = 0;
    qint64 lastUse_ = 0;
    Phase phase_ = Phase::Filling;
    int depth_ = 0;
    int dragSteps_ = 0;
    bool cancels_ = false;
    std::map<std::string, int> counts_;
    std::vector<AudioFilePtr> records_;
    std::vector<qint64> memory_;
};

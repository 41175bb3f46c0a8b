#pragma once

#include "model/AudioFile.h"

#include <QDialog>
#include <QStringList>
#include <QTimer>

#include <vector>

class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class RenamePlanModel;
class TokenField;
class UserDefaults;

/// The window in which the file-name format is edited, with a preview for the first file and the plan for all of them.
/// Closing it in any way stores the format. Return does not rename in it, except on the button: Ctrl+Return does.
class FileFormatController : public QDialog {
    Q_OBJECT

public:
    /// @param records of the files to rename, in the order in which that is to be done.
    FileFormatController(std::vector<AudioFilePtr> records, UserDefaults& defaults, QWidget* parent);

    /// Wants the files renamed, and closes the window; nothing when every name would stay as it is.
    void updateFileNames();

signals:
    void renameWanted(const std::vector<AudioFilePtr>& records, const QStringList& format);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void buildFormat(QGridLayout& grid);
    QPushButton* buildDefault();
    QWidget* buildPalette(const QStringList& tokens);
    void buildPlan(QGridLayout& grid);
    void buildButtons(QGridLayout& grid);
    void showPreview();
    void showPlan();
    /// How many files will get another name.
    int renamed() const;
    QString planText() const;
    void windowWillClose();

    const std::vector<AudioFilePtr> records_;
    UserDefaults& defaults_;
    TokenField* tokenField_ = nullptr;
    QLabel* previewField_ = nullptr;
    RenamePlanModel* plan_ = nullptr;
    QCheckBox* onlyFailing_ = nullptr;
    QLabel* summary_ = nullptr;
    QPushButton* rename_ = nullptr;
    QTimer planDue_;
};

#pragma once

#include "model/AudioFile.h"

#include <QDialog>
#include <QTimer>

class ArrayController;
class QCheckBox;
class QGridLayout;
class QLabel;
class RenamePlanModel;
class TokenField;
class UserDefaults;

/// The window in which the file-name format is edited, with a preview for the first selected file and the plan for all
/// of them. Closing it in any way stores the format.
class FileFormatController : public QDialog {
    Q_OBJECT

public:
    FileFormatController(ArrayController& list, UserDefaults& defaults, QWidget* parent);

    /// Wants the files renamed, and closes the window.
    void updateFileNames();

signals:
    void renameWanted(const QStringList& format);

private:
    void buildFormat(QGridLayout& grid);
    QWidget* buildPalette(const QStringList& tokens);
    void buildPlan(QGridLayout& grid);
    void buildButtons(QGridLayout& grid);
    void showPreview();
    void showPlan();
    QString planText() const;
    void windowWillClose();

    ArrayController& list_;
    UserDefaults& defaults_;
    AudioFilePtr audioFile_;
    TokenField* tokenField_ = nullptr;
    QLabel* previewField_ = nullptr;
    RenamePlanModel* plan_ = nullptr;
    QCheckBox* onlyFailing_ = nullptr;
    QLabel* summary_ = nullptr;
    QTimer planDue_;
};

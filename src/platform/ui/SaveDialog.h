#pragma once

#include "platform/FilePanels.h"

#include <QFileDialog>

class QLineEdit;

/// The desktop's save dialog, whose list of file types is the choice of the format. Deletes itself when closed.
///
/// Where the dialog is one of ours, the name in its field has the extension under which it is saved: that of the format
/// chosen last. One of another format that the user types chooses that format.
class SaveDialog : public QFileDialog, public SavePanel {
    Q_OBJECT

public:
    SaveDialog(QWidget* parent, const SavePanelRequest& request, const QString& folder);

    void setFormats(const QStringList& titles, const QList<QStringList>& extensions) override;
    void selectFormat(int index) override;
    void accept() override;

private:
    /// The field for the name; null in a dialog of the desktop.
    QLineEdit* field() const;
    void followName(const QString& name);
    void takeFormat();
    /// The format whose extension the path has; -1 for none.
    int formatOf(const QString& path) const;
    /// The path with an extension: its own if that is one of any format, otherwise that of the chosen format behind it.
    QString completed(const QString& path) const;
    /// The path with an extension of the chosen format, in place of one that another format has.
    QString inChosenFormat(const QString& path) const;
    bool mayReplace(const QString& path);
    void finish(const QString& path);

    SavePanelRequest request_;
    QList<QStringList> extensions_;
    int format_ = -1;
    /// The name in the field before the dialog changed it for another format.
    QString name_;
    /// The user chose another format in a dialog of the desktop, whose field can't follow.
    bool isFormatChosen_ = false;
};

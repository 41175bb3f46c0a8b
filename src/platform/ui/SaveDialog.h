#pragma once

#include "platform/FilePanels.h"

#include <QFileDialog>

/// The desktop's save dialog, whose list of file types is the choice of the format. Deletes itself when closed.
class SaveDialog : public QFileDialog, public SavePanel {
    Q_OBJECT

public:
    SaveDialog(QWidget* parent, const SavePanelRequest& request, const QString& folder);

    void setFormatTitles(const QStringList& titles) override;
    void selectFormat(int index) override;
    void setAllowedExtensions(const QStringList& extensions) override;

private:
    /// The path with the first of the extensions, unless it ends in one of them: in place of one that another format
    /// has, and behind any other.
    QString completed(const QString& path) const;
    void takeFormat();
    void finish(const QString& path);

    SavePanelRequest request_;
    QStringList extensions_;
    /// Those of every format that was chosen.
    QStringList knownExtensions_;
    int format_ = -1;
};

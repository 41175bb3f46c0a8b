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

    /// @return @p path, with the first of the extensions added unless it ends in one of them.
    static QString completed(const QString& path, const QStringList& extensions);

private:
    void takeFormat();
    void finish(const QString& path);

    SavePanelRequest request_;
    QStringList extensions_;
    int format_ = -1;
};

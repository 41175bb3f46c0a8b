#pragma once

#include "platform/FilePanels.h"

#include <QFileDialog>
#include <QPointer>

/// The desktop's own file dialogs, modeless.
class FileDialogs : public FilePanels {
public:
    /// The window over which the panels open.
    void setParentWindow(QWidget* window) { window_ = window; }

    void chooseAudioFiles(const QString& title, Chosen chosen) override;
    void chooseAudioFolder(const QString& title, Chosen chosen) override;
    void chooseImageFiles(const QString& title, const QStringList& mimeTypes, Chosen chosen) override;
    void chooseSavePath(const SavePanelRequest& request) override;
    AccessPanelAnswer runAccessPanel(const AccessPanelRequest& request) override;

private:
    QFileDialog& makeDialog(const QString& title, QFileDialog::FileMode mode);
    void show(QFileDialog& dialog, Chosen chosen);

    QPointer<QWidget> window_;
    QString lastFolder_;
};

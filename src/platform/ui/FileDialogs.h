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
    void chooseImageFiles(const ImagePanelRequest& request) override;
    void chooseSavePath(const SavePanelRequest& request) override;
    AccessPanelAnswer runAccessPanel(const AccessPanelRequest& request) override;

private:
    /// Whether the panel of this name is open for the same subject, and comes to the front. One that is open for another
    /// is closed.
    bool isOpen(const QString& panel, const QStringList& subject = {});
    QFileDialog& makeDialog(const QString& panel, const QString& title, QFileDialog::FileMode mode,
                            const QStringList& subject = {});
    void show(QFileDialog& dialog, Chosen chosen);

    QPointer<QWidget> window_;
    QString lastFolder_;
};

#include "platform/ui/FileDialogs.h"

#include <QCoreApplication>

void FileDialogs::chooseAudioFiles(const QString& title, Chosen chosen)
{
    show(title, QFileDialog::ExistingFiles, std::move(chosen));
}

void FileDialogs::chooseAudioFolder(const QString& title, Chosen chosen)
{
    show(title, QFileDialog::Directory, std::move(chosen));
}

void FileDialogs::show(const QString& title, QFileDialog::FileMode mode, Chosen chosen)
{
    auto* dialog = new QFileDialog(window_, title, lastFolder_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(mode);
    if (mode == QFileDialog::ExistingFiles)
        dialog->setNameFilter(QCoreApplication::translate("FileDialogs", "MP3 and M4A files")
                              + QStringLiteral(" (*.mp3 *.m4a)"));
    QObject::connect(dialog, &QFileDialog::filesSelected, dialog, [this, dialog, chosen](const QStringList& files) {
        lastFolder_ = dialog->directory().absolutePath();
        chosen(files);
    });
    dialog->show();
}

#include "platform/ui/FileDialogs.h"

#include "platform/ui/SaveDialog.h"

#include <QCoreApplication>
#include <QMimeDatabase>

void FileDialogs::chooseAudioFiles(const QString& title, Chosen chosen)
{
    auto& dialog = makeDialog(title, QFileDialog::ExistingFiles);
    dialog.setNameFilter(QCoreApplication::translate("FileDialogs", "MP3 and M4A files")
                         + QStringLiteral(" (*.mp3 *.m4a)"));
    show(dialog, std::move(chosen));
}

void FileDialogs::chooseAudioFolder(const QString& title, Chosen chosen)
{
    show(makeDialog(title, QFileDialog::Directory), std::move(chosen));
}

void FileDialogs::chooseImageFiles(const QString& title, const QStringList& mimeTypes, Chosen chosen)
{
    auto& dialog = makeDialog(title, QFileDialog::ExistingFiles);
    QStringList patterns;
    for (const auto& type : mimeTypes) {
        for (const auto& pattern : QMimeDatabase().mimeTypeForName(type).globPatterns())
            patterns += {pattern, pattern.toUpper()};
    }
    dialog.setNameFilter(QCoreApplication::translate("FileDialogs", "Images")
                         + QStringLiteral(" (%1)").arg(patterns.join(QLatin1Char(' '))));
    show(dialog, std::move(chosen));
}

void FileDialogs::chooseSavePath(const SavePanelRequest& request)
{
    SavePanelRequest remembering = request;
    remembering.chosen = [this, chosen = request.chosen](const QString& path) {
        lastFolder_ = QFileInfo(path).absolutePath();
        chosen(path);
    };
    auto* dialog = new SaveDialog(window_, remembering, lastFolder_);
    dialog->show();
}

QFileDialog& FileDialogs::makeDialog(const QString& title, QFileDialog::FileMode mode)
{
    auto* dialog = new QFileDialog(window_, title, lastFolder_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(mode);
    return *dialog;
}

void FileDialogs::show(QFileDialog& dialog, Chosen chosen)
{
    QObject::connect(&dialog, &QFileDialog::filesSelected, &dialog,
                     [this, &dialog, chosen = std::move(chosen)](const QStringList& files) {
                         lastFolder_ = dialog.directory().absolutePath();
                         chosen(files);
                     });
    dialog.show();
}

#include "app/ViewController.h"

#include "artwork/ArtworkCommands.h"
#include "artwork/ShownArt.h"
#include "library/ArrayController.h"
#include "library/BatchCommands.h"
#include "library/FieldEditor.h"
#include "library/FileLoader.h"
#include "library/RowStep.h"
#include "naming/FileRenamer.h"
#include "platform/FilePanels.h"
#include "tagengine/TaglibWrapper.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>
#include <numeric>

ViewController::ViewController(ArrayController& list, FileLoader& loader, FieldEditor& editor, BatchCommands& batch,
                               ArtworkCommands& artwork, ShownArt& art, FileRenamer& renamer, FilePanels& panels)
    : list_(list), loader_(loader), editor_(editor), batch_(batch), artwork_(artwork), art_(art), renamer_(renamer),
      panels_(panels)
{
    artwork.setReport([this](const Deed& deed) { emit done(deed); });
    const auto showArtAgain = [this] { art_.put(commonArt(selectionSummary())); };
    connect(&batch, &BatchCommands::artChanged, this, showArtAgain);
    connect(&artwork, &ArtworkCommands::artChanged, this, showArtAgain);
    connect(&list.selection(), &ListSelection::aboutToChange, this, &ViewController::editingShouldEnd);
    connect(&list.selection(), &ListSelection::changed, this, &ViewController::updateFields);
}

void ViewController::openDocument()
{
    panels_.chooseAudioFiles(tr("Open Music Files"), [this](const QStringList& paths) { openPaths(paths); });
}

void ViewController::openFolder()
{
    panels_.chooseAudioFolder(tr("Open Music Files"), [this](const QStringList& paths) { openPaths(paths); });
}

bool ViewController::openPath(const QString& path)
{
    return loader_.openPath(path);
}

void ViewController::openPaths(const QStringList& paths)
{
    loader_.openPaths(paths);
}

void ViewController::removeDocuments()
{
    const QList<int> rows = list_.selection().rows();
    if (rows.isEmpty())
        return;
    list_.removeObjectsAtArrangedObjectIndexes(rows);
    const int left = list_.rowCount();
    if (left > 0)
        list_.selection().setRows({std::min(rows.first(), left - 1)});
}

void ViewController::viewDidDisappear()
{
    QList<int> rows(list_.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    list_.removeObjectsAtArrangedObjectIndexes(rows);
}

void ViewController::selectAll()
{
    QList<int> rows(list_.rowCount());
    std::iota(rows.begin(), rows.end(), 0);
    list_.selection().setRows(rows);
}

void ViewController::deselectAll()
{
    list_.selection().setRows({});
}

void ViewController::moveSelection(int step)
{
    if (const auto row = rowAfterStep(list_.selection().rows(), list_.rowCount(), step))
        list_.selection().setRows({*row});
}

void ViewController::moveRows(int step)
{
    const QList<int> rows = list_.selection().rows();
    if (rows.isEmpty())
        return;
    const int gap = step < 0 ? rows.first() - 1 : rows.last() + 2;
    if (gap >= 0 && gap <= list_.rowCount())
        list_.moveRows(rows, gap);
}

void ViewController::applyEdit(const QString& key, const QString& value)
{
    editor_.applyEdit(key, value);
    showValues();
}

void ViewController::updateCompilationState(const QString& state)
{
    applyEdit(QStringLiteral("COMPILATION"), state);
}

void ViewController::incrementTrackNumbers()
{
    endEditing();
    const Deed deed = batch_.incrementTrackNumbers();
    showValues();
    emit done(deed);
}

void ViewController::removeUnsupportedTags()
{
    endEditing();
    emit done(batch_.removeUnsupportedTags());
}

void ViewController::removeAllTags()
{
    endEditing();
    const Deed deed = batch_.removeAllTags();
    updateFields();
    emit done(deed);
}

void ViewController::updateImage()
{
    endEditing();
    artwork_.updateImage();
}

void ViewController::deleteImage()
{
    artwork_.deleteImage();
}

void ViewController::saveImage()
{
    endEditing();
    artwork_.saveImage();
}

void ViewController::copyImage()
{
    if (auto data = artwork_.copiedImage())
        QGuiApplication::clipboard()->setMimeData(data.release());
}

void ViewController::pasteImage()
{
    if (const auto* data = QGuiApplication::clipboard()->mimeData())
        artwork_.pasteImage(*data);
}

void ViewController::showInFinder()
{
    artwork_.showInFinder();
}

void ViewController::showFormatWindow()
{
    if (!list_.selection().hasSelection())
        return;
    endEditing();
    emit formatWindowWanted();
}

void ViewController::renameFiles(const QStringList& format)
{
    renameFiles(list_.selectedObjects(), format);
}

void ViewController::renameFiles(const std::vector<AudioFilePtr>& records, const QStringList& format)
{
    renamer_.renameFiles(records, format);
}

SelectionSummary ViewController::selectionSummary() const
{
    return SelectionSummary(list_.selectedObjects());
}

void ViewController::updateFields()
{
    art_.show(commonArt(showValues()));
}

SelectionSummary ViewController::showValues()
{
    const SelectionSummary summary = selectionSummary();
    emit fieldsChanged(summary);
    return summary;
}

QByteArray ViewController::commonArt(const SelectionSummary& summary) const
{
    if (summary.isEmpty() || summary.isMixed(QStringLiteral("imageDataLength")))
        return {};
    const QList<int> rows = list_.selection().rows();
    const auto& first = *list_.arrangedObjects()[static_cast<std::size_t>(rows.first())];
    // Bytes that are no picture may differ though they measure alike.
    if (first.imageDataLength == 0 && rows.size() > 1)
        return {};
    return TaglibWrapper::getImageData(first.path, first.fileType).value_or(QByteArray());
}

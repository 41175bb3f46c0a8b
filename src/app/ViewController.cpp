#include "app/ViewController.h"

#include "library/ArrayController.h"
#include "library/FieldEditor.h"
#include "library/FileLoader.h"
#include "model/NumberText.h"
#include "platform/FilePanels.h"
#include "tagengine/TaglibWrapper.h"

#include <algorithm>
#include <numeric>

ViewController::ViewController(ArrayController& list, FileLoader& loader, FieldEditor& editor, FilePanels& panels)
    : list_(list), loader_(loader), editor_(editor), panels_(panels)
{
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
    const QList<int> rows = list_.selection().rows();
    if (rows.isEmpty())
        return;
    const int row = (step < 0 ? rows.first() : rows.last()) + step;
    if (row >= 0 && row < list_.rowCount())
        list_.selection().setRows({row});
}

void ViewController::applyEdit(const QString& key, const QString& value)
{
    editor_.applyEdit(key, value);
}

SelectionSummary ViewController::selectionSummary() const
{
    return SelectionSummary(list_.selectedObjects());
}

void ViewController::updateFields()
{
    const SelectionSummary summary = selectionSummary();
    emit fieldsChanged(summary);
    emit artChanged(commonArt(summary));
}

QByteArray ViewController::commonArt(const SelectionSummary& summary) const
{
    if (summary.value(QStringLiteral("imageDataLength"), NumberText::variousNumber) == NumberText::variousNumber)
        return {};
    const auto& first = *list_.arrangedObjects()[static_cast<std::size_t>(list_.selection().rows().first())];
    return TaglibWrapper::getImageData(first.path, first.fileType).value_or(QByteArray());
}

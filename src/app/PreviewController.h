#pragma once

#include <QObject>

class ArrayController;
class AudioFile;

/// The window that shows a preview of one file.
class PreviewPanelView {
public:
    virtual ~PreviewPanelView() = default;

    /// Comes to the front with this file, and stays with it until it is given another one.
    virtual void showPreview(const AudioFile& record) = 0;
    /// Goes away; nothing when it is not shown.
    virtual void hidePreview() = 0;
    virtual bool isPreviewShown() const = 0;
};

/// Decides what is previewed and when.
class PreviewController : public QObject {
    Q_OBJECT

public:
    PreviewController(const ArrayController& list, PreviewPanelView& panel);

    /// Hides the preview when it is shown, shows the first selected file otherwise; nothing without a selection.
    void openQuickLook();
    void closeQuickLook();
    bool isShown() const;
    /// 1 when any record is selected, else 0: only the first selected one is previewed.
    int numberOfPreviewItems() const;

signals:
    /// The preview was shown or hidden, by whomever.
    void shownChanged(bool shown);

private:
    const ArrayController& list_;
    PreviewPanelView& panel_;
};

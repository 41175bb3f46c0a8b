#include "app/ui/PreviewPanel.h"

#include "app/ui/ElidedLabel.h"
#include "app/ui/PlaybackBar.h"
#include "app/ui/PreviewCover.h"
#include "model/AudioFile.h"
#include "platform/ui/AccessibleRole.h"
#include "platform/ui/DesktopWindow.h"
#include "tagengine/TaglibWrapper.h"

#include <QCoreApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <memory>

namespace {

constexpr int coverSide = 200;
constexpr int initialWidth = 560;
constexpr int margin = 20;
constexpr int lineGap = 4;
constexpr int columnGap = 12;
constexpr int groupGap = 12;
constexpr qreal titleScale = 1.35;
constexpr qint64 seekStep = 5000;

/// Qt reads "[*]" in a window's title as the mark of unsaved changes.
QString windowTitleOf(const QString& text)
{
    return text.simplified().replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

} // namespace

PreviewPanel::PreviewPanel(AudioPlayerFactory makePlayer, QWidget* keyReceiver, QWidget* parent)
    : QWidget(parent, Qt::Dialog), keyReceiver_(keyReceiver)
{
    AccessibleRole::set(*this, QAccessible::Dialog);
    cover_ = new PreviewCover;
    cover_->setFixedSize(coverSide, coverSide);
    bar_ = new PlaybackBar(std::move(makePlayer));
    for (auto* control : bar_->findChildren<QWidget*>())
        control->installEventFilter(this);

    auto* texts = new QGridLayout;
    texts->setVerticalSpacing(lineGap);
    texts->setHorizontalSpacing(columnGap);
    buildTexts(*texts);
    auto* top = new QHBoxLayout;
    top->setSpacing(margin);
    top->addWidget(cover_, 0, Qt::AlignTop);
    top->addLayout(texts, 1);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(margin, margin, margin, groupGap);
    all->setSpacing(groupGap);
    all->addLayout(top, 1);
    all->addWidget(bar_);
    resize(initialWidth, sizeHint().height());
}

void PreviewPanel::showPreview(const AudioFile& record)
{
    setWindowTitle(windowTitleOf(record.fileName));
    showTexts(record);
    cover_->setCover(TaglibWrapper::getImageData(record.path, record.fileType).value_or(QByteArray()));
    bar_->open(record.path);
    DesktopWindow::bringToFront(*this);
    bar_->focusButton();
}

void PreviewPanel::hidePreview()
{
    hide();
}

bool PreviewPanel::isPreviewShown() const
{
    return isVisible();
}

void PreviewPanel::keyPressEvent(QKeyEvent* event)
{
    if (!handleKey(*event))
        QWidget::keyPressEvent(event);
}

bool PreviewPanel::eventFilter(QObject* watched, QEvent* event)
{
    return event->type() == QEvent::KeyPress ? handleKey(*static_cast<QKeyEvent*>(event))
                                             : QWidget::eventFilter(watched, event);
}

void PreviewPanel::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!event->spontaneous())
        emit shownChanged(true);
}

void PreviewPanel::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (event->spontaneous())
        return;
    bar_->close();
    cover_->setCover({});
    emit shownChanged(false);
}

void PreviewPanel::buildTexts(QGridLayout& texts)
{
    title_ = addLine(texts, "title");
    QFont larger = title_->font();
    larger.setPointSizeF(larger.pointSizeF() * titleScale);
    larger.setWeight(QFont::DemiBold);
    title_->setFont(larger);
    artist_ = addLine(texts, "artist");
    album_ = addLine(texts, "album");
    texts.setRowMinimumHeight(texts.rowCount(), groupGap);
    details_ = {addDetail(texts, tr("Track"), "track"), addDetail(texts, tr("Year"), "year"),
                addDetail(texts, tr("Genre"), "genre")};
    texts.setRowStretch(texts.rowCount(), 1);
    fileName_ = addLine(texts, "fileName");
    texts.setColumnStretch(1, 1);
}

ElidedLabel* PreviewPanel::addLine(QGridLayout& texts, const char* name)
{
    auto* label = new ElidedLabel;
    label->setObjectName(QLatin1String(name));
    texts.addWidget(label, texts.rowCount(), 0, 1, 2);
    return label;
}

PreviewPanel::Detail PreviewPanel::addDetail(QGridLayout& texts, const QString& caption, const char* name)
{
    const Detail detail{new QLabel(caption), new ElidedLabel};
    detail.caption->setForegroundRole(QPalette::PlaceholderText);
    detail.value->setObjectName(QLatin1String(name));
    detail.caption->setBuddy(detail.value);
    const int row = texts.rowCount();
    texts.addWidget(detail.caption, row, 0);
    texts.addWidget(detail.value, row, 1);
    return detail;
}

void PreviewPanel::showTexts(const AudioFile& record)
{
    const bool untitled = record.title.simplified().isEmpty();
    title_->setFullText(untitled ? record.fileName : record.title);
    fileName_->setFullText(record.fileName);
    fileName_->setVisible(!untitled);
    artist_->setFullText(record.artist);
    album_->setFullText(record.album);
    artist_->setVisible(!record.artist.isEmpty());
    album_->setVisible(!record.album.isEmpty());
    const std::array values{&record.trackNumber, &record.year, &record.genre};
    for (std::size_t i = 0; i < values.size(); ++i) {
        details_[i].value->setFullText(*values[i]);
        details_[i].value->setVisible(!values[i]->isEmpty());
        details_[i].caption->setVisible(!values[i]->isEmpty());
    }
}

bool PreviewPanel::handleKey(const QKeyEvent& event)
{
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier))
        return false;
    if (event.matches(QKeySequence::Close)) {
        hide();
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Space:
    case Qt::Key_Escape:
        // A key that is held since it opened the panel does not close it.
        if (!event.isAutoRepeat())
            hide();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_P:
    case Qt::Key_K:
    case Qt::Key_MediaTogglePlayPause:
        if (!event.isAutoRepeat())
            bar_->togglePlayback();
        return true;
    case Qt::Key_Left:
    case Qt::Key_Right:
        bar_->seekBy(event.key() == Qt::Key_Left ? -seekStep : seekStep);
        return true;
    default:
        return handToList(event);
    }
}

bool PreviewPanel::handToList(const QKeyEvent& event)
{
    constexpr std::array keys{Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Home, Qt::Key_End};
    if (!keyReceiver_ || std::find(keys.begin(), keys.end(), event.key()) == keys.end())
        return false;
    const std::unique_ptr<QKeyEvent> copy(event.clone());
    QCoreApplication::sendEvent(keyReceiver_, copy.get());
    return true;
}

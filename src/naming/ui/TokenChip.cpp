#include "naming/ui/TokenChip.h"

#include "naming/FileNameFormat.h"

#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextEdit>
#include <QTextLayout>

namespace {

constexpr int tokenProperty = QTextFormat::UserProperty + 1;
constexpr qreal sidePadding = 8;
constexpr qreal verticalPadding = 2;
constexpr qreal gap = 1;
constexpr int tint = 56;

/// The part of its line that stands above and below a place in a document.
QRectF lineAt(const QRectF& place, const QTextDocument& document, int position)
{
    const QTextBlock block = document.findBlock(position);
    const QTextLine line = block.layout()->lineForTextPosition(position - block.position());
    return {place.left(), block.layout()->position().y() + line.y(), place.width(), line.height()};
}

} // namespace

QSizeF TokenChip::size(const QString& title, const QFont& font)
{
    const QFontMetricsF metrics(font);
    return {metrics.horizontalAdvance(title) + 2 * (sidePadding + gap),
            metrics.height() + 2 * (verticalPadding + gap)};
}

qreal TokenChip::lift(const QFont& font)
{
    const QFontMetricsF metrics(font);
    return (metrics.ascent() - metrics.descent()) / 2 - metrics.xHeight() / 4;
}

void TokenChip::paint(QPainter& painter, const QRectF& place, const QString& title, const QFont& font,
                      const QPalette& palette, bool isSelected)
{
    const QColor accent = palette.color(QPalette::Highlight);
    QColor background = accent;
    if (!isSelected)
        background.setAlpha(tint);
    const QRectF outline = place.adjusted(gap, gap, -gap, -gap);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(background);
    painter.drawRoundedRect(outline, outline.height() / 2, outline.height() / 2);
    painter.setFont(font);
    painter.setPen(palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(outline, Qt::AlignCenter, title);
    painter.restore();
}

QTextCharFormat TokenChip::format(const QString& token)
{
    QTextCharFormat format;
    format.setObjectType(objectType);
    format.setVerticalAlignment(QTextCharFormat::AlignMiddle);
    format.setProperty(tokenProperty, token);
    return format;
}

QString TokenChip::token(const QTextFormat& format)
{
    return format.stringProperty(tokenProperty);
}

QString TokenChip::title(const QTextFormat& format)
{
    return FileNameFormat::shownTitle(token(format));
}

TokenChip::Renderer::Renderer(QTextEdit& field) : QObject(&field), field_(field) {}

QSizeF TokenChip::Renderer::intrinsicSize(QTextDocument*, int, const QTextFormat& format)
{
    return size(title(format), field_.font());
}

void TokenChip::Renderer::drawObject(QPainter* painter, const QRectF& place, QTextDocument* document, int position,
                                     const QTextFormat& format)
{
    const QTextCursor cursor = field_.textCursor();
    const bool isSelected = position >= cursor.selectionStart() && position < cursor.selectionEnd();
    // The layout centres it on the middle of small letters.
    const QRectF chip = place.translated(0, -lift(field_.font()));
    const QTransform& map = painter->transform();
    if (isSelected)
        selected_.push_back({map.mapRect(chip), map.mapRect(lineAt(place, *document, position)), title(format)});
    else
        paint(*painter, chip, title(format), field_.font(), field_.palette(), false);
}

void TokenChip::Renderer::paintSelected(QPainter& painter)
{
    for (const auto& chip : selected_)
        painter.fillRect(chip.veil, field_.palette().base());
    for (const auto& chip : selected_)
        paint(painter, chip.place, chip.title, field_.font(), field_.palette(), true);
    selected_.clear();
}

#pragma once

#include <QTextObjectInterface>
#include <QWidget>

#include <vector>

class QTextEdit;

/// How a field token looks.
namespace TokenChip {

QSizeF size(const QString& title, const QFont& font);
/// How far above its place in a line of text a chip is drawn: its text then stands on the line of the others.
qreal lift(const QFont& font);
void paint(QPainter& painter, const QRectF& place, const QString& title, const QFont& font, const QPalette& palette,
           bool isSelected);

/// What a text document holds in the place of a chip.
constexpr int objectType = QTextFormat::UserObject + 1;
QTextCharFormat format(const QString& token);
QString token(const QTextFormat& format);
/// In the user's language.
QString title(const QTextFormat& format);

/// Draws the chips of a field's document.
class Renderer : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    explicit Renderer(QTextEdit& field);

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& place, QTextDocument* document, int position,
                    const QTextFormat& format) override;

    /// Draws the selected chips of the last painting again, over the veil that the layout lays on what is selected.
    void paintSelected(QPainter& painter);

private:
    struct Chip {
        QRectF place;
        /// What the layout veils.
        QRectF veil;
        QString title;
    };

    QTextEdit& field_;
    std::vector<Chip> selected_;
};

} // namespace TokenChip

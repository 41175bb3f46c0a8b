#include "app/ui/Icons.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

namespace {

class SymbolEngine : public QIconEngine {
public:
    explicit SymbolEngine(QByteArray svg) : svg_(std::move(svg)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        QByteArray coloured = svg_;
        coloured.replace("currentColor", QApplication::palette().color(group, role).name().toLatin1());
        QSvgRenderer(coloured).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new SymbolEngine(svg_); }

private:
    QByteArray svg_;
};

} // namespace

namespace Icons {

QIcon symbol(const QString& name)
{
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? QIcon(new SymbolEngine(file.readAll())) : QIcon();
}

} // namespace Icons

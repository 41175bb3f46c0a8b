#include "app/ui/PositionSlider.h"

#include <QAccessibleWidget>
#include <QMouseEvent>
#include <QStyle>

namespace {

constexpr int millisecondsPerSecond = 1000;

/// Speaks of seconds, since who hears the value wants no milliseconds.
class Accessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit Accessible(PositionSlider& slider) : QAccessibleWidget(&slider, QAccessible::Slider), slider_(slider) {}

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Value ? PositionSlider::timeText(slider_.value()) : QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return slider_.value() / millisecondsPerSecond; }
    void setCurrentValue(const QVariant& value) override { slider_.setValue(value.toInt() * millisecondsPerSecond); }
    QVariant maximumValue() const override { return slider_.maximum() / millisecondsPerSecond; }
    QVariant minimumValue() const override { return slider_.minimum() / millisecondsPerSecond; }
    QVariant minimumStepSize() const override { return 1; }

private:
    PositionSlider& slider_;
};

QAccessibleInterface* make(const QString&, QObject* object)
{
    auto* slider = qobject_cast<PositionSlider*>(object);
    return slider ? new Accessible(*slider) : nullptr;
}

} // namespace

PositionSlider::PositionSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent)
{
    QAccessible::installFactory(make);
}

QString PositionSlider::timeText(qint64 milliseconds)
{
    const qint64 seconds = milliseconds / millisecondsPerSecond;
    const qint64 hours = seconds / 3600;
    const auto twoDigits = [](qint64 number) { return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0')); };
    if (hours == 0)
        return QStringLiteral("%1:%2").arg(seconds / 60).arg(twoDigits(seconds % 60));
    return QStringLiteral("%1:%2:%3").arg(hours).arg(twoDigits(seconds / 60 % 60), twoDigits(seconds % 60));
}

void PositionSlider::mousePressEvent(QMouseEvent* event)
{
    const int handle = style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this);
    const int x = event->position().toPoint().x() - handle / 2;
    if (event->button() == Qt::LeftButton)
        setSliderPosition(QStyle::sliderValueFromPosition(minimum(), maximum(), x, width() - handle,
                                                          layoutDirection() == Qt::RightToLeft));
    QSlider::mousePressEvent(event);
}

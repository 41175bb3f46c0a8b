#include "app/ui/Contrast.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int steps = 20;

/// @param part of the second colour, from 0 to 1.
QColor mixed(const QColor& from, const QColor& to, double part)
{
    const auto between = [part](double a, double b) { return static_cast<float>(a + (b - a) * part); };
    return QColor::fromRgbF(between(from.redF(), to.redF()), between(from.greenF(), to.greenF()),
                            between(from.blueF(), to.blueF()));
}

double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The first colour on the way to another one that is told from all the others.
QColor moved(const QColor& colour, const QColor& goal, std::initializer_list<QColor> others)
{
    const QColor start = mixed(others.begin()[0], colour, colour.alphaF());
    QColor result = colour;
    const auto isTold = [&](const QColor& other) { return Contrast::ratio(result, other) >= Contrast::enough; };
    for (int i = 1; i <= steps && !std::all_of(others.begin(), others.end(), isTold); ++i)
        result = mixed(start, goal, double(i) / steps);
    return result;
}

} // namespace

double Contrast::ratio(const QColor& text, const QColor& background)
{
    const double first = luminance(mixed(background, text, text.alphaF()));
    const double second = luminance(background);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

QPalette Contrast::ensured(QPalette palette)
{
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        const auto colour = [&](QPalette::ColorRole role) { return palette.color(group, role); };
        const auto correct = [&](QPalette::ColorRole role, const QColor& better) {
            if (better != colour(role))
                palette.setColor(group, role, better);
        };
        for (const auto role : {QPalette::PlaceholderText, QPalette::Link, QPalette::LinkVisited})
            correct(role, moved(colour(role), colour(QPalette::Text),
                                {colour(QPalette::Base), colour(QPalette::Window), colour(QPalette::AlternateBase)}));
        const QColor chosen = colour(QPalette::HighlightedText);
        correct(QPalette::Highlight,
                moved(colour(QPalette::Highlight), luminance(chosen) > 0.5 ? Qt::black : Qt::white, {chosen}));
    }
    return palette;
}

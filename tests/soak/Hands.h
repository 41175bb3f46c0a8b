#pragma once

#include <QStringList>
#include <QWidget>

#include <random>

class QFileDialog;
class QTableView;

/// What happens by chance, the same for the same seed.
struct Chance {
    std::mt19937 numbers;

    int below(int limit) { return static_cast<int>(numbers() % static_cast<unsigned int>(std::max(limit, 1))); }
    bool oneIn(int count) { return below(count) == 0; }
    QPoint placeIn(const QWidget& widget) { return {below(widget.width()), below(widget.height())}; }
    template <class List>
    auto any(const List& list)
    {
        return list[static_cast<std::size_t>(below(static_cast<int>(std::size(list))))];
    }
};

/// What the user does without looking.
namespace Hands {

inline const QStringList numberFields{u"YEAR"_qs, u"TRACKNUM"_qs, u"TRACKTOTAL"_qs, u"DISCNUM"_qs, u"DISCTOTAL"_qs};
inline constexpr Qt::KeyboardModifiers modifiers[]{
    {}, {}, {}, Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier};

QString anyWord(Chance& chance);
/// Which must be there.
QWidget& part(const QWidget& window, const QString& name);
QStringList filesIn(const QString& folder);
void dropFiles(QWidget& widget, const QStringList& paths);
/// A text that is no number would be kept in the list and not in every file.
bool isNumberFocused();
void typeText(Chance& chance);
/// @param onlyMove no key that changes anything.
void pressKey(Chance& chance, bool onlyMove = false);
void clickAnywhere(Chance& chance, QWidget& window);
/// Some rows, and now and then all of them.
void selectFew(Chance& chance, QTableView& table);
/// @param folder as for RandomUser.
void answer(Chance& chance, QFileDialog& dialog, const QString& folder);

} // namespace Hands

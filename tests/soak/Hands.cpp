#include "soak/Hands.h"

#include "platform/PathBytes.h"
#include "soak/Input.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QTableView>

#include <filesystem>
#include <span>

namespace {

const QStringList words{u"Evening"_qs,  u"été à Nîmes"_qs, u"Łódź"_qs, u"夜"_qs,   u"😀 Noon"_qs,      u"AC/DC"_qs,
                        u"x: \"y\""_qs, u"...and"_qs,      u"a "_qs,   u"Rock"_qs, QString(300, u'z')};

} // namespace

QString Hands::anyWord(Chance& chance)
{
    return chance.any(words);
}

QWidget& Hands::part(const QWidget& window, const QString& name)
{
    auto* found = window.findChild<QWidget*>(name);
    if (!found)
        qFatal("There is no %s", qPrintable(name));
    return *found;
}

QStringList Hands::filesIn(const QString& folder)
{
    QStringList paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.toStdString()))
        paths.append(PathBytes::decode(QByteArray::fromStdString(entry.path().string())));
    return paths;
}

void Hands::dropFiles(QWidget& widget, const QStringList& paths)
{
    QList<QUrl> urls;
    std::transform(paths.begin(), paths.end(), std::back_inserter(urls), PathBytes::toUrl);
    QMimeData dropped;
    dropped.setUrls(urls);
    Input::drop(widget, dropped);
}

bool Hands::isNumberFocused()
{
    return QApplication::focusWidget() && numberFields.contains(QApplication::focusWidget()->objectName());
}

void Hands::typeText(Chance& chance)
{
    if (isNumberFocused())
        Input::key(Qt::Key_A, Qt::ControlModifier);
    Input::type(isNumberFocused() ? QString::number(1 + chance.below(2100)) : chance.any(words));
}

void Hands::pressKey(Chance& chance, bool onlyMove)
{
    constexpr std::array keys{Qt::Key_Up,    Qt::Key_Down, Qt::Key_Left,   Qt::Key_Right,     Qt::Key_Home,
                              Qt::Key_End,   Qt::Key_Tab,  Qt::Key_Return, Qt::Key_Escape,    Qt::Key_PageUp,
                              Qt::Key_Space, Qt::Key_Menu, Qt::Key_F2,     Qt::Key_Backspace, Qt::Key_Delete};
    constexpr std::size_t moving = 9;
    const bool few = onlyMove || isNumberFocused();
    Input::key(chance.any(std::span(keys).first(few ? moving : keys.size())),
               onlyMove ? Qt::KeyboardModifiers() : chance.any(modifiers));
}

void Hands::clickAnywhere(Chance& chance, QWidget& window)
{
    QList<QWidget*> widgets{&window};
    for (auto* widget : window.findChildren<QWidget*>()) {
        if (widget->isVisible() && widget->window() == &window)
            widgets.append(widget);
    }
    auto& widget = *chance.any(widgets);
    Input::click(widget, chance.placeIn(widget), chance.oneIn(4) ? Qt::RightButton : Qt::LeftButton);
}

void Hands::selectFew(Chance& chance, QTableView& table)
{
    auto& rows = *table.viewport();
    Input::click(rows, {40, chance.below(rows.height())});
    if (chance.oneIn(60))
        Input::key(Qt::Key_A, Qt::ControlModifier);
    for (int more = chance.below(3); more > 0; --more)
        Input::click(rows, {40, chance.below(rows.height())}, Qt::LeftButton, chance.any(modifiers));
}

void Hands::answer(Chance& chance, QFileDialog& dialog, const QString& folder)
{
    QString path = folder + u"/pictures/"_qs + chance.any(QDir(folder + u"/pictures"_qs).entryList(QDir::Files));
    if (dialog.acceptMode() == QFileDialog::AcceptSave)
        path = folder + u"/saved/"_qs + QString::number(chance.below(20));
    else if (dialog.fileMode() == QFileDialog::Directory)
        path = folder + u"/music"_qs;
    else if (dialog.nameFilters().value(0).contains(u"mp3"))
        path = chance.any(filesIn(folder + u"/music"_qs));
    auto* name = dialog.findChild<QLineEdit*>();
    name->setText(path);
    name->setFocus();
    Input::key(Qt::Key_Return);
}

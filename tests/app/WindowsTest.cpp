#include "fakes/Windows.h"
#include "app/ui/Contrast.h"
#include "app/ui/ProgramStyle.h"
#include "artwork/ui/DropView.h"
#include "support/Rows.h"

#include <QAbstractSlider>
#include <QAccessible>
#include <QLabel>
#include <QSignalSpy>

#include <set>

namespace {

QAccessibleInterface& accessible(QObject& object)
{
    return *QAccessible::queryAccessibleInterface(&object);
}

/// Walks the tree below a window and notes what a user of assistive technology would miss.
struct Walk {
    QStringList faults;
    std::set<QObject*> found;

    void visit(QAccessibleInterface& part, const QString& above)
    {
        const auto* object = part.object();
        const QString path =
            above + u'/' + nameOf(part) + QLatin1String(object ? object->metaObject()->className() : "");
        found.insert(part.object());
        if (isInteractive(part))
            judge(part, path);
        std::set<QString> siblings;
        for (int i = 0; i < part.childCount(); ++i) {
            auto* child = part.child(i);
            if (!child || !child->isValid() || child->state().invisible)
                continue;
            if (isInteractive(*child) && child->state().focusable && !siblings.insert(nameOf(*child)).second)
                faults.append(path + u": two children are named "_qs + nameOf(*child));
            visit(*child, path);
        }
    }

private:
    static QString nameOf(QAccessibleInterface& part) { return part.text(QAccessible::Name).simplified(); }
    static bool isInteractive(QAccessibleInterface& part)
    {
        // The cells of a table may be empty.
        const auto role = part.role();
        if (role == QAccessible::Cell || role == QAccessible::Separator)
            return false;
        auto* actions = part.actionInterface();
        return part.state().focusable || role == QAccessible::ColumnHeader || role == QAccessible::MenuItem
               || (actions && actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
    }
    void judge(QAccessibleInterface& part, const QString& path)
    {
        const std::set vague{QAccessible::NoRole, QAccessible::Client, QAccessible::Pane, QAccessible::Grouping};
        if (nameOf(part).isEmpty())
            faults.append(path + u": has no name"_qs);
        if (vague.contains(part.role()))
            faults.append(path + u": has no fitting role"_qs);
        // Tables and headings are acted on through cells and menus.
        const std::set acting{QAccessible::Button, QAccessible::CheckBox, QAccessible::EditableText};
        auto* actions = part.actionInterface();
        if (acting.contains(part.role()) && !part.state().disabled && (!actions || actions->actionNames().isEmpty()))
            faults.append(path + u": has no action"_qs);
    }
};

QString characterAt(QAccessibleTextInterface& text)
{
    int start = -1;
    int end = -1;
    const QString character = text.textAtOffset(text.cursorPosition(), QAccessible::CharBoundary, &start, &end);
    return u"%1 %2 %3"_qs.arg(character).arg(start).arg(end);
}

/// Fine enough for letters to have a core of their own colour.
constexpr int scale = 3;

QImage picture(QWidget& window)
{
    QImage image(window.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    window.render(&image);
    return image;
}

QRect placeOf(const QWidget& widget, const QWidget& window)
{
    return {widget.mapTo(&window, QPoint()), widget.size()};
}

/// The contrast between the most frequent colour and the one that differs most from it.
double strongestContrast(const QImage& image)
{
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    const auto fewer = [&](QRgb a, QRgb b) { return counts[a] < counts[b]; };
    const auto colours = counts.keys();
    const QColor background(*std::max_element(colours.begin(), colours.end(), fewer));
    double strongest = 1;
    for (const QRgb colour : colours)
        strongest = std::max(strongest, Contrast::ratio(QColor(colour), background));
    return strongest;
}

} // namespace

/// What every window has: names, roles and an order for the keyboard, a focus that shows, texts that can be read.
class WindowsTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ProgramStyle::install();
        QAccessible::setActive(true);
        QCoreApplication::setApplicationVersion(u"1.2.3"_qs);
        desktop_ = QApplication::palette();
    }
    void init() { windows_ = std::make_unique<Windows>(); }
    void cleanup()
    {
        windows_.reset();
        QApplication::setPalette(desktop_);
    }

    void everythingIsNamedAndReached_data() { Windows::addRows(); }
    void everythingIsNamedAndReached()
    {
        auto& window = windows_->open(row()[0]);
        Walk walk;
        walk.visit(accessible(window), {});
        const auto chain = tabChain(window);
        chain.first()->setFocus(Qt::TabFocusReason);
        std::set<QWidget*> reached;
        for (qsizetype i = 0; i < 2 * chain.size(); ++i) {
            reached.insert(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget()->window(), &window);
        for (auto* widget : chain) {
            if (!walk.found.contains(widget))
                walk.faults.append(widgetText(*widget) + u": is not in the tree"_qs);
            // Of buttons of which one is down, Tab leads to that one, and arrow keys to the others.
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            if (!reached.contains(widget) && (!button || !button->autoExclusive() || button->isChecked()))
                walk.faults.append(widgetText(*widget) + u": Tab does not lead there"_qs);
        }
        QCOMPARE(walk.faults.join(u'\n'), QString());
        QVERIFY(walk.found.size() > 5);
    }

    void focusAndTextsShow_data() { Windows::addRows({u" | desktop"_qs, u" | light"_qs, u" | dark"_qs}); }
    void focusAndTextsShow()
    {
        const auto [name, mode] = row<2>();
        wear(mode);
        auto& window = windows_->open(name);
        QStringList faults;
        for (auto* widget : tabChain(window)) {
            const QRect place = placeOf(*widget, window).adjusted(-4, -4, 4, 4);
            widget->setFocus(Qt::TabFocusReason);
            if (auto* field = qobject_cast<QLineEdit*>(widget))
                field->deselect();
            QVERIFY2(widget->hasFocus(), qPrintable(widgetText(*widget)));
            const QImage with = window.grab(place).toImage();
            widget->clearFocus();
            if (window.grab(place).toImage() == with)
                faults.append(widgetText(*widget) + u": the focus does not show"_qs);
        }
        const QImage all = picture(window);
        int texts = 0;
        for (auto* widget : window.findChildren<QWidget*>()) {
            const auto* label = qobject_cast<QLabel*>(widget);
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            const bool isText = (label && !label->text().isEmpty()) || (button && !button->text().isEmpty())
                                || qobject_cast<TokenField*>(widget);
            if (!isText || !widget->isEnabled() || !widget->isVisibleTo(&window) || widget->visibleRegion().isEmpty())
                continue;
            ++texts;
            const QRect place = placeOf(*widget, window);
            const double ratio = strongestContrast(all.copy(QRect(place.topLeft() * scale, place.size() * scale)));
            if (ratio < Contrast::enough)
                faults.append(widgetText(*widget) + u": contrast of "_qs + QString::number(ratio));
        }
        QCOMPARE(faults.join(u'\n'), QString());
        QVERIFY(texts > 0);
    }

    void colourPairsHaveContrast_data() { addRows({"desktop", "light", "dark", "weak"}); }
    void colourPairsHaveContrast()
    {
        const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[]{
            {QPalette::Text, QPalette::AlternateBase},
            {QPalette::PlaceholderText, QPalette::Base},
            {QPalette::PlaceholderText, QPalette::Window},
            {QPalette::HighlightedText, QPalette::Highlight},
            {QPalette::Link, QPalette::Window},
            {QPalette::ToolTipText, QPalette::ToolTipBase},
        };
        QCOMPARE(qRound(Contrast::ratio(QColor(0x76, 0x76, 0x76), Qt::white) * 100), 454);
        wear(row()[0]);
        const auto colours = QApplication::palette();
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            for (const auto& [text, background] : pairs) {
                const double ratio = Contrast::ratio(colours.color(group, text), colours.color(group, background));
                QVERIFY2(ratio >= Contrast::enough,
                         qPrintable(u"%1 on %2: %3"_qs.arg(text).arg(background).arg(ratio)));
            }
        }
    }

    void theArtWellIsAButton()
    {
        auto& well = *windows_->desk().find<DropView>();
        auto& button = accessible(well);
        QCOMPARE(button.role(), QAccessible::Button);
        QCOMPARE(button.text(QAccessible::Description), u"No Artwork"_qs);
        windows_->open(u"main"_qs);
        QTRY_VERIFY(button.text(QAccessible::Description).contains(u"pixels"_qs));
        QSignalSpy wishes(&well, &DropView::changeWanted);
        button.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTest::keyClick(&well, Qt::Key_Return);
        QTest::keyClick(&well, Qt::Key_Space);
        QTRY_COMPARE(wishes.size(), 3);
        // Of art that can't be decoded, only what works is on.
        windows_->desk().art.show(ScratchFolder::fixture(u"cover.png"_qs).first(60));
        QTRY_VERIFY(button.text(QAccessible::Description).startsWith(u"Can't be shown"_qs));
        QStringList enabled;
        for (const auto* action : well.actions())
            enabled += action->isEnabled() ? action->text().remove(u'&') : u"-"_qs;
        QCOMPARE(enabled.join(u", "_qs), u"Replace Album Art, Paste Album Art, -, -, Delete Album Art"_qs);
        button.actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        QVERIFY(closeMenu());
    }

    void theTokenFieldReadsTitles()
    {
        auto& field = *windows_->open(u"format"_qs).findChild<TokenField*>();
        field.setTokens({u"Track"_qs, u" - "_qs, u"Title"_qs});
        auto& part = accessible(field);
        auto& text = *part.textInterface();
        QCOMPARE(part.text(QAccessible::Value), u"Track - Title"_qs);
        field.moveCursor(QTextCursor::Start);
        QCOMPARE(characterAt(text), u"Track 0 5"_qs);
        QTest::keyClick(&field, Qt::Key_Right);
        QCOMPARE(characterAt(text), u"  5 6"_qs);
        field.moveCursor(QTextCursor::End);
        QCOMPARE(characterAt(text), u" 13 13"_qs);
        QTest::keyClick(&field, Qt::Key_Left, Qt::ShiftModifier);
        int start = 0;
        int end = 0;
        text.selection(0, &start, &end);
        QCOMPARE(text.text(start, end), u"Title"_qs);
        part.editableTextInterface()->replaceText(5, 6, u"Album"_qs);
        part.editableTextInterface()->deleteText(10, 11);
        QCOMPARE(field.tokens(), QStringList({u"Track"_qs, u"Album"_qs, u" "_qs, u"Title"_qs}));
    }

    void theSliderTellsTheTime()
    {
        auto& slider = accessible(*windows_->open(u"preview"_qs).findChild<QAbstractSlider*>());
        slider.valueInterface()->setCurrentValue(65);
        QCOMPARE(slider.text(QAccessible::Value), u"1:05"_qs);
        QCOMPARE(slider.text(QAccessible::Description), u"1:05 of 3:07"_qs);
    }

private:
    /// Gives the program the colours that it has in an appearance, or on a desktop with weak colours.
    static void wear(const QString& mode)
    {
        if (mode == u"weak") {
            QPalette weak(QColor(0xef, 0xf0, 0xf1));
            weak.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 90));
            weak.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
            weak.setColor(QPalette::HighlightedText, Qt::white);
            weak.setColor(QPalette::Link, QColor(0x29, 0x80, 0xb9));
            QApplication::setPalette(weak);
        }
        Appearance appearance;
        if (mode == u"light" || mode == u"dark")
            appearance.apply(mode == u"dark" ? Appearance::Mode::Dark : Appearance::Mode::Light);
        QCoreApplication::processEvents();
    }

    QPalette desktop_;
    std::unique_ptr<Windows> windows_;
};

QTEST_MAIN(WindowsTest)
#include "WindowsTest.moc"

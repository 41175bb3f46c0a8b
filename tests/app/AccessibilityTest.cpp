#include "app/ui/ProgramStyle.h"
#include "artwork/ui/DropView.h"
#include "fakes/Windows.h"
#include "library/RecordColumns.h"
#include "support/Rows.h"

#include <QAbstractSlider>
#include <QAccessible>
#include <QSignalSpy>
#include <QTimer>

#include <set>

namespace {

QAccessibleInterface& accessible(QObject& object)
{
    return *QAccessible::queryAccessibleInterface(&object);
}

QString nameOf(QAccessibleInterface& part)
{
    return part.text(QAccessible::Name).simplified();
}

bool isInteractive(QAccessibleInterface& part)
{
    // The cells of a table may be empty.
    const auto role = part.role();
    if (role == QAccessible::Cell || role == QAccessible::Separator)
        return false;
    auto* actions = part.actionInterface();
    return part.state().focusable || role == QAccessible::ColumnHeader || role == QAccessible::MenuItem
           || (actions && actions->actionNames().contains(QAccessibleActionInterface::pressAction()));
}

/// Walks the tree below a window and notes what a user of assistive technology would miss.
struct Walk {
    QStringList faults;
    QStringList names;
    std::set<QObject*> found;

    void visit(QAccessibleInterface& part, const QString& above)
    {
        const QString name = nameOf(part);
        const QString path = above + u'/' + describe(part, name);
        if (part.object())
            found.insert(part.object());
        names.append(name);
        if (isInteractive(part))
            judge(part, name, path);
        std::set<QString> siblings;
        for (int i = 0; i < part.childCount(); ++i) {
            auto* child = part.child(i);
            if (!child || !child->isValid() || child->state().invisible)
                continue;
            const QString childName = nameOf(*child);
            if (isInteractive(*child) && child->state().focusable && !siblings.insert(childName).second)
                faults.append(path + u": two children are named "_qs + childName);
            visit(*child, path);
        }
    }

private:
    static QString describe(QAccessibleInterface& part, const QString& name)
    {
        const auto* object = part.object();
        return QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(part.role())) + u'"' + name
               + u"\" "_qs + QString::fromLatin1(object ? object->metaObject()->className() : "");
    }
    void judge(QAccessibleInterface& part, const QString& name, const QString& path)
    {
        const std::set vague{QAccessible::NoRole, QAccessible::Client, QAccessible::Pane, QAccessible::Grouping};
        if (name.isEmpty())
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

} // namespace

class AccessibilityTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        ProgramStyle::install();
        QAccessible::setActive(true);
        QCoreApplication::setApplicationVersion(u"1.2.3"_qs);
    }
    void init() { windows_ = std::make_unique<Windows>(); }
    void cleanup() { windows_.reset(); }

    void everythingIsNamed_data() { Windows::addRows(); }
    void everythingIsNamed()
    {
        auto& window = windows_->open(row()[0]);
        Walk walk;
        walk.visit(accessible(window), {});
        for (auto* widget : tabChain(window)) {
            if (!walk.found.contains(widget))
                walk.faults.append(widgetText(*widget) + u": is not in the tree"_qs);
        }
        QVERIFY2(walk.faults.isEmpty(), qPrintable(u'\n' + walk.faults.join(u'\n')));
        QVERIFY(walk.names.size() > 10);
    }

    void tabLeadsThroughEverything_data() { Windows::addRows(); }
    void tabLeadsThroughEverything()
    {
        auto& window = windows_->open(row()[0]);
        const auto chain = tabChain(window);
        chain.first()->setFocus(Qt::TabFocusReason);
        std::set<QWidget*> reached;
        for (qsizetype i = 0; i < 2 * chain.size(); ++i) {
            reached.insert(QApplication::focusWidget());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(QApplication::focusWidget()->window(), &window);
        for (auto* widget : chain) {
            // Of buttons of which one is down, Tab leads to that one, and arrow keys to the others.
            const auto* button = qobject_cast<QAbstractButton*>(widget);
            if (!button || !button->autoExclusive() || button->isChecked())
                QVERIFY2(reached.contains(widget), qPrintable(widgetText(*widget)));
        }
    }

    void theTableReadsItsCells()
    {
        windows_->open(u"main"_qs);
        auto& table = accessible(*windows_->mainWindow().findChild<QuickLookTableView*>());
        auto* cell = table.tableInterface()->cellAt(1, RecordColumns::Title);
        QCOMPARE(nameOf(*cell), u"Lame Title"_qs);
        QCOMPARE(cell->tableCellInterface()->rowIndex(), 1);
        QCOMPARE(table.tableInterface()->columnDescription(RecordColumns::Title), u"Title"_qs);
        QCOMPARE(table.tableInterface()->selectedRows(), QList{0});
    }

    void theArtWellIsAButton()
    {
        auto& well = *windows_->mainWindow().findChild<DropView*>();
        auto& button = accessible(well);
        QCOMPARE(button.role(), QAccessible::Button);
        QCOMPARE(button.childCount(), 0);
        QCOMPARE(button.text(QAccessible::Description), u"No Artwork"_qs);
        windows_->open(u"main"_qs);
        QTRY_VERIFY(button.text(QAccessible::Description).contains(u"pixels"_qs));
        QSignalSpy wishes(&well, &DropView::changeWanted);
        button.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(wishes.size(), 1);
        QTest::keyClick(&well, Qt::Key_Return);
        QTest::keyClick(&well, Qt::Key_Space);
        QCOMPARE(wishes.size(), 3);
        QTimer closing;
        connect(&closing, &QTimer::timeout, this, [&] {
            if (auto* menu = QApplication::activePopupWidget()) {
                closing.stop();
                menu->close();
            }
        });
        closing.start(1);
        button.actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
        QTRY_VERIFY(!closing.isActive());
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
        QCOMPARE(text.cursorPosition(), 5);
        QCOMPARE(characterAt(text), u"  5 6"_qs);
        field.moveCursor(QTextCursor::End);
        QCOMPARE(text.cursorPosition(), text.characterCount());
        QCOMPARE(characterAt(text), u" 13 13"_qs);
        QTest::keyClick(&field, Qt::Key_Left, Qt::ShiftModifier);
        int start = 0;
        int end = 0;
        text.selection(0, &start, &end);
        QCOMPARE(text.text(start, end), u"Title"_qs);
        QTest::keyClick(&field, Qt::Key_Left, Qt::AltModifier);
        QCOMPARE(part.text(QAccessible::Value), u"TrackTitle - "_qs);
        part.editableTextInterface()->replaceText(5, 10, u"Album"_qs);
        QCOMPARE(field.tokens(), QStringList({u"Track"_qs, u"Album"_qs, u" - "_qs}));
        part.editableTextInterface()->deleteText(10, 11);
        QCOMPARE(field.tokens(), QStringList({u"Track"_qs, u"Album"_qs, u"- "_qs}));
    }

    void theSliderTellsTheTime()
    {
        auto& slider = accessible(*windows_->open(u"preview"_qs).findChild<QAbstractSlider*>());
        slider.valueInterface()->setCurrentValue(65);
        QCOMPARE(slider.text(QAccessible::Value), u"1:05"_qs);
        QCOMPARE(slider.text(QAccessible::Description), u"1:05 of 3:07"_qs);
        QCOMPARE(slider.valueInterface()->maximumValue().toInt(), 187);
    }

private:
    static QString characterAt(QAccessibleTextInterface& text)
    {
        int start = -1;
        int end = -1;
        const QString character = text.textAtOffset(text.cursorPosition(), QAccessible::CharBoundary, &start, &end);
        return u"%1 %2 %3"_qs.arg(character).arg(start).arg(end);
    }

    std::unique_ptr<Windows> windows_;
};

QTEST_MAIN(AccessibilityTest)
#include "AccessibilityTest.moc"

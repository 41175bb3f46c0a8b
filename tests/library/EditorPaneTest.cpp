#include "library/ui/EditorPane.h"
#include "library/SelectionSummary.h"
#include "library/ui/GenreBox.h"
#include "library/ui/TagField.h"
#include "support/PropertyText.h"
#include "support/Rows.h"

#include <QApplication>
#include <QCheckBox>
#include <QSignalSpy>
#include <QWheelEvent>

class EditorPaneTest : public QObject {
    Q_OBJECT

private slots:
    void init()
    {
        pane_ = std::make_unique<EditorPane>();
        edited_ = std::make_unique<QSignalSpy>(pane_.get(), &EditorPane::edited);
        pane_->show();
        QVERIFY(QTest::qWaitForWindowActive(pane_.get()));
    }

    // The selected records, a field's key and its text.
    void showsTheSelection_data()
    {
        addRows({" | TITLE", "GENRE=Pop GENRE=Pop | GENRE | Pop", "TITLE=A TITLE=a TITLE=A | TITLE | Various",
                 "TITLE=A YEAR=1 | TITLE | Various", "TRACKNUMBER=3/10 TRACKNUMBER=5/10 | TRACKNUM | -",
                 "TRACKNUMBER=3/10 TRACKNUMBER=5/10 | TRACKTOTAL | 10", "DISCNUMBER=1/2 DISCNUMBER=1 | DISCNUM | 1",
                 "DISCNUMBER=1/2 DISCNUMBER=1 | DISCTOTAL | -", "YEAR=-12 | YEAR | -12",
                 "YEAR=1999 YEAR=2001 | YEAR | -", "YEAR=2001-05-03 | YEAR", "YEAR=+ | YEAR", "YEAR=٢٠٠١ | YEAR"});
    }
    void showsTheSelection()
    {
        const auto [records, key, shown] = row<3>();
        show(u"TITLE=Before;GENRE=Before;YEAR=1;TRACKNUMBER=8/9"_qs);
        show(records);
        QCOMPARE(field(key).text(), shown);
        QCOMPARE(field(key).isEnabled(), !records.isEmpty());
        QCOMPARE(pane_->findChild<QCheckBox*>()->isEnabled(), !records.isEmpty());
        QCOMPARE(edits(), QString());
    }

    // what is typed into a field | the edits that come of it | what the field shows then
    void editsOnce_data()
    {
        addRows({"TITLE:⇥ |  | Old", "TITLE:New⏎⇥ | TITLE=New | New", "TITLE:New⇥ | TITLE=New | New",
                 "TITLE:Olds⌫⏎ |  | Old", "TITLE:New⎋⇥ |  | Old", "TITLE:⌦⇥ | TITLE= | ", "ARTIST:⏎⇥ |  | Various",
                 "ARTIST:⌦⇥ | ARTIST= | ", "TRACKNUM:3⇥ | TRACKNUM=3 | 3", "ARTIST:New⎋⇥ |  | Various",
                 "GENRE:⇥ |  | Rock", "GENRE:Zydeco⇥ | GENRE=Zydeco | Zydeco", "GENRE:Jazz⌦⇥ | GENRE=Jazz | Jazz",
                 "GENRE:pop⇥ | GENRE=Pop-Folk | Pop-Folk", "GENRE:pop⌫⇥ | GENRE=Pop | Pop",
                 "GENRE:popf⎋a⇥ | GENRE=Alternative | Alternative"});
    }
    void editsOnce()
    {
        const auto [typed, expected, shown] = row<3>();
        const QMap<QChar, Qt::Key> keys{{u'⇥', Qt::Key_Tab},
                                        {u'⏎', Qt::Key_Return},
                                        {u'⎋', Qt::Key_Escape},
                                        {u'⌫', Qt::Key_Backspace},
                                        {u'⌦', Qt::Key_Delete}};
        show(u"TITLE=Old;ARTIST=A;TRACKNUMBER=1/2;GENRE=Rock TITLE=Old;ARTIST=B;TRACKNUMBER=2/2;GENRE=Rock"_qs);
        auto& edited = field(typed.section(u':', 0, 0));
        edited.setFocus(Qt::TabFocusReason);
        edited.selectAll();
        for (const QChar c : typed.section(u':', 1)) {
            if (keys.contains(c))
                QTest::keyClick(QApplication::focusWidget(), keys[c]);
            else
                QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
        }
        QCOMPARE(edits(), expected);
        QCOMPARE(edited.text(), shown);
    }

    void aLongTextIsNotCut()
    {
        TagField& title = field(u"TITLE"_qs);
        title.showValue(QString(50000, u'x'), false);
        title.commit();
        QCOMPARE(title.text().size(), 50000);
        QCOMPARE(edits(), QString());
    }

    void selectsAMarkerWithTheFocus()
    {
        show(u"TITLE=A TITLE=B"_qs);
        TagField& title = field(u"TITLE"_qs);
        QTest::mouseClick(&title, Qt::LeftButton, {}, QPoint(4, title.height() / 2));
        QCOMPARE(title.selectedText(), u"Various"_qs);
        QTest::keyClick(&title, 'C');
        pane_->endEditing();
        pane_->endEditing();
        QCOMPARE(edits(), u"TITLE=C"_qs);
    }

    void genreIsChosenFromTheListOnly()
    {
        show(u"GENRE=Zydeco"_qs);
        auto& box = *pane_->findChild<GenreBox*>();
        box.setFocus();
        QWheelEvent turn({5, 5}, box.mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {}, Qt::NoScrollPhase,
                         false);
        QCoreApplication::sendEvent(&field(u"GENRE"_qs), &turn);
        QSignalSpy steps(pane_.get(), &EditorPane::rowStepWanted);
        QTest::keyClick(&box, Qt::Key_Down);
        QTest::keyClick(&box, Qt::Key_Up);
        QTest::keyClick(&box, Qt::Key_PageDown);
        QTest::keyClick(&box, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(steps, (QList<QVariantList>{{1}, {-1}}));
        QCOMPARE(edits(), QString());
    }

    // the selected records | the state of the box | what two clicks make of it
    void compilationIsMixedOnlyWhileTheSelectionIs_data()
    {
        addRows(
            {"COMPILATION=1 COMPILATION=0 | 1 | 1 0", "COMPILATION=0 | 0 | 1 0", "COMPILATION=1 | 2 | 0 1", " | 0"});
    }
    void compilationIsMixedOnlyWhileTheSelectionIs()
    {
        const auto [records, state, clicks] = row<3>();
        auto& box = *pane_->findChild<QCheckBox*>();
        QStringList clicked;
        connect(pane_.get(), &EditorPane::compilationClicked, this, [&](const QString& on) { clicked.append(on); });
        show(u"COMPILATION=1 COMPILATION=0"_qs);
        show(records);
        QCOMPARE(box.checkState(), static_cast<Qt::CheckState>(state.toInt()));
        box.click();
        box.click();
        QCOMPARE(clicked.join(u' '), clicks);
    }

private:
    void show(const QString& texts)
    {
        std::vector<AudioFilePtr> records;
        for (const auto& text : texts.split(u' ', Qt::SkipEmptyParts))
            records.push_back(AudioFile::fromPropertyMap(propertyMap(text), {}, 0));
        pane_->showSummary(SelectionSummary(records));
    }
    TagField& field(const QString& key) { return *pane_->findChild<TagField*>(key); }
    QString edits()
    {
        // What the fields leave for the next turn of the event loop counts too.
        QCoreApplication::processEvents();
        QStringList texts;
        for (const auto& call : std::as_const(*edited_))
            texts.append(call[0].toString() + u'=' + call[1].toString());
        return texts.join(u' ');
    }

    std::unique_ptr<EditorPane> pane_;
    std::unique_ptr<QSignalSpy> edited_;
};

QTEST_MAIN(EditorPaneTest)
#include "EditorPaneTest.moc"

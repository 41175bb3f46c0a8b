#include "library/ui/EditorPane.h"
#include "library/SelectionSummary.h"
#include "library/ui/GenreBox.h"
#include "library/ui/TagField.h"
#include "support/PropertyText.h"
#include "support/Rows.h"

#include <QAbstractItemView>
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

    void editsOnce_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("edits");
        QTest::addColumn<QString>("text");
        const auto row = [](const char* name, const char* typed, const char* edits, const char* text) {
            QTest::newRow(name) << QString::fromUtf8(typed) << QString::fromUtf8(edits) << QString::fromUtf8(text);
        };
        // The field's key, and what is typed there; § is the Delete key.
        row("untouched", "TITLE:\t", "", "Old");
        row("Return, Tab", "TITLE:New\r\t", "TITLE=New", "New");
        row("Tab", "TITLE:New\t", "TITLE=New", "New");
        row("typed back", "TITLE:Olds\b\r", "", "Old");
        row("Escape", "TITLE:New\x1b\t", "", "Old");
        row("cleared", "TITLE:§\t", "TITLE=", "");
        row("marker untouched", "ARTIST:\r\t", "", "Various");
        row("marker cleared", "ARTIST:§\t", "ARTIST=", "");
        row("marker replaced", "TRACKNUM:3\t", "TRACKNUM=3", "3");
        row("marker, Escape", "ARTIST:New\x1b\t", "", "Various");
        row("genre untouched", "GENRE:\t", "", "Rock");
        row("genre not listed", "GENRE:Zydeco\t", "GENRE=Zydeco", "Zydeco");
        row("genre listed", "GENRE:Jazz§\t", "GENRE=Jazz", "Jazz");
        row("genre completed", "GENRE:pop\t", "GENRE=Pop-Folk", "Pop-Folk");
        row("genre not completed", "GENRE:pop\b\t", "GENRE=Pop", "Pop");
        row("genre replaced and completed",
            "GENRE:popf\x1b"
            "a\t",
            "GENRE=Alternative", "Alternative");
    }
    void editsOnce()
    {
        QFETCH(QString, typed);
        show(u"TITLE=Old;ARTIST=A;TRACKNUMBER=1/2;GENRE=Rock TITLE=Old;ARTIST=B;TRACKNUMBER=2/2;GENRE=Rock"_qs);
        auto& edited = field(typed.section(u':', 0, 0));
        edited.setFocus(Qt::TabFocusReason);
        edited.selectAll();
        for (const QChar c : typed.section(u':', 1)) {
            if (c == u'§')
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Delete);
            else
                QTest::keyClick(QApplication::focusWidget(), c.toLatin1());
        }
        QTEST(edits(), "edits");
        QTEST(edited.text(), "text");
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
        show(u"TITLE=A;ALBUM=Same TITLE=B;ALBUM=Same"_qs);
        TagField& title = field(u"TITLE"_qs);
        const auto isMuted = [](const QWidget& widget) {
            return widget.palette().color(QPalette::Text) == widget.palette().color(QPalette::PlaceholderText);
        };
        QVERIFY(isMuted(title) && !isMuted(field(u"ALBUM"_qs)));
        QTest::mouseClick(&title, Qt::LeftButton, {}, QPoint(4, title.height() / 2));
        QCOMPARE(title.selectedText(), u"Various"_qs);
        QTest::keyClick(&title, 'C');
        QVERIFY(!isMuted(title));
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

        box.showPopup();
        QTRY_VERIFY(box.view()->isVisible());
        box.view()->setCurrentIndex(box.model()->index(17, 0));
        QTest::keyClick(box.view(), Qt::Key_Return);
        QCOMPARE(edits(), u"GENRE=Rock"_qs);
        field(u"TITLE"_qs).setFocus();
        QCOMPARE(edits(), u"GENRE=Rock"_qs);
    }

    void compilationIsMixedOnlyWhileTheSelectionIs()
    {
        auto& box = *pane_->findChild<QCheckBox*>();
        show(u"COMPILATION=1 COMPILATION=0"_qs);
        QVERIFY(box.isTristate() && box.checkState() == Qt::PartiallyChecked);
        show(u"COMPILATION=0"_qs);
        QVERIFY(!box.isTristate());
        QSignalSpy clicked(pane_.get(), &EditorPane::compilationClicked);
        box.click();
        box.click();
        QCOMPARE(clicked, QList({QVariantList{u"1"_qs}, QVariantList{u"0"_qs}}));
        show(u"COMPILATION=1"_qs);
        QVERIFY(box.isChecked());
        show({});
        QVERIFY(!box.isChecked() && !box.isTristate());
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

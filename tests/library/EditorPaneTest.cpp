#include "library/ui/EditorPane.h"
#include "library/SelectionSummary.h"
#include "library/ui/GenreBox.h"
#include "library/ui/TagField.h"
#include "support/PropertyText.h"
#include "support/Rows.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
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

    // what is typed into a field (see type) | the edits that come of it | what the field shows then
    void editsOnce_data()
    {
        addRows({"TITLE:⇥ |  | Old", "TITLE:New⏎⇥ | TITLE=New | New", "TITLE:New⇥ | TITLE=New | New",
                 "TITLE:Olds⌫⏎ |  | Old", "TITLE:New⎋⇥ |  | Old", "TITLE:⌦⇥ | TITLE= | ", "ARTIST:⏎⇥ |  | Various",
                 "ARTIST:⌦⇥ | ARTIST= | ", "TRACKNUM:3⇥ | TRACKNUM=3 | 3", "ARTIST:New⎋⇥ |  | Various"});
    }
    void editsOnce()
    {
        const auto [typed, expected, shown] = row<3>();
        QGuiApplication::clipboard()->setText(u"Pasted"_qs);
        show(u"TITLE=Old;ARTIST=A;TRACKNUMBER=1/2;GENRE=Rock TITLE=Old;ARTIST=B;TRACKNUMBER=2/2;GENRE=Rock"_qs);
        auto& edited = begin(typed);
        QCOMPARE(edits(), expected);
        QCOMPARE(edited.text(), shown);
    }

    void proposesGenres_data()
    {
        addRows({"GENRE:⇥ |  | Rock", "GENRE:Zydeco⇥ | GENRE=Zydeco | Zydeco", "GENRE:Jazz⌦⇥ | GENRE=Jazz | Jazz",
                 "GENRE:pop⇥ | GENRE=pop | pop", "GENRE:pop⌫⇥ | GENRE=Pop | Pop", "GENRE:blu⏎ | GENRE=Blues | Blues",
                 "GENRE:ROCK⏎ | GENRE=ROCK | ROCK", "GENRE:Rock⇥ |  | Rock", "GENRE:jazz⎋⇥ |  | Rock",
                 "GENRE:rock→⇥ | GENRE=Rock ’n’ Roll | Rock ’n’ Roll",
                 "GENRE:jazz⇲⏎ | GENRE=Jazz & Funk | Jazz & Funk", "GENRE:jazz→⌫⏎ | GENRE=Jazz & Fun | Jazz & Fun",
                 "GENRE:Zydeco▾⎋⇥ | GENRE=Zydeco | Zydeco", "GENRE:rock▾⎋⇥ | GENRE=rock | rock",
                 "GENRE:pop▾⏎ | GENRE=Pop-Folk | Pop-Folk", "GENRE:popf⎋a⇥ | GENRE=Alternative | Alternative"});
    }
    void proposesGenres() { editsOnce(); }

    void writesOnlyWhatIsMeant_data()
    {
        addRows({"ARTIST:New⏎⌃z⏎⇥ | ARTIST=New | New",
                 "ARTIST:New⌃z⏎⌃z⇥ |  | Various",
                 "TITLE:New⏎⌃z⇥ | TITLE=New TITLE=Old | Old",
                 "ARTIST:Various⏎⇥ | ARTIST=Various | Various",
                 "ARTIST:⌦Various⇥ | ARTIST=Various | Various",
                 "ARTIST:Various⎋⇥ |  | Various",
                 "ARTIST:⌃x⌃v⇥ | ARTIST=Pasted | Pasted",
                 "ARTIST:⇲x⇥ | ARTIST=x | x",
                 "ARTIST:⇱⌃v⇥ | ARTIST=Pasted | Pasted",
                 "ARTIST:⇲⌫⇥ | ARTIST= | ",
                 "ARTIST:⌃u⌃v⇥ | ARTIST=Pasted | Pasted",
                 "ARTIST:⇲ł⇥ | ARTIST=ł | ł",
                 "TRACKNUM:3⏎⌃z⇥ | TRACKNUM=3 | 3",
                 "TRACKNUM:-⇥ | TRACKNUM=- | -",
                 "ARTIST:⌥x◆v⌃⌥z⌥⇧x⇥ |  | Various",
                 "GENRE:⌥x⇥ |  | Rock",
                 "ARTIST:⇮q⌃⌥@⇥ | ARTIST=q@ | q@",
                 "ARTIST:ł⇥ | ARTIST=ł | ł",
                 "ARTIST:…∅⇥ |  | Various",
                 "ARTIST:…⇥ |  | Various"});
    }
    void writesOnlyWhatIsMeant() { editsOnce(); }

    // what is typed | what the same files have meanwhile | what is typed then | the edits | what the field shows then
    void filesChangeDuringAnEdit_data()
    {
        addRows({"ARTIST:Ne | ARTIST=X,ARTIST=Y | w⇥ | ARTIST=New | New", "ARTIST:Ne | ARTIST=X,ARTIST=X | ⎋⇥ |  | X",
                 "ARTIST:Ne | ARTIST=X,ARTIST=X | ⌃z⇥ |  | X", "ARTIST:… | ARTIST=A,ARTIST=B | ∅⇥ |  | Various",
                 "TITLE:⇱ | ARTIST=A,ARTIST=B | N⇥ | TITLE=NOld | NOld",
                 "TITLE:New⏎ | TITLE=Old,TITLE=Old | ⌃aNew⇥ | TITLE=New TITLE=New | New",
                 "ARTIST:New⏎ | ARTIST=New,ARTIST=New | ⌃z⌃z⇥ | ARTIST=New | New",
                 "YEAR: 1987⏎ | YEAR=1987,YEAR=1987 | 6⇥ | YEAR= 1987 YEAR=19876 | 19876",
                 "GENRE:rock | TITLE=X,TITLE=X | ⇥ | GENRE=rock | rock"});
    }
    void filesChangeDuringAnEdit()
    {
        const auto [typed, found, typedThen, expected, shown] = row<5>();
        show(u"TITLE=Old;ARTIST=A;GENRE=Rock TITLE=Old;ARTIST=B;GENRE=Rock"_qs);
        auto& edited = begin(typed);
        for (qsizetype i = 0; i < 2; ++i) {
            PropertyMap tags = records_[static_cast<std::size_t>(i)]->propertyMap();
            tags.insert(propertyMap(found.section(u',', i, i)));
            records_[static_cast<std::size_t>(i)]->setFromPropertyMap(tags);
        }
        pane_->showSummary(SelectionSummary(records_));
        type(typedThen);
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

    // the selected records | the state of the box | what three clicks make of it
    void compilationIsMixedOnlyWhileTheSelectionIs_data()
    {
        addRows({"COMPILATION=1 COMPILATION=0 | 1 | 1 0 1", "COMPILATION=0 | 0 | 1 0 1", "COMPILATION=1 | 2 | 0 1 0",
                 " | 0"});
    }
    void compilationIsMixedOnlyWhileTheSelectionIs()
    {
        const auto [records, state, clicks] = row<3>();
        auto& box = *pane_->findChild<QCheckBox*>();
        QStringList clicked;
        connect(pane_.get(), &EditorPane::compilationClicked, this, [&](const QString& on) { clicked.append(on); });
        int told = Qt::Unchecked;
        connect(&box, &QCheckBox::stateChanged, &box, [&](int now) { told = now; });
        show(u"COMPILATION=1 COMPILATION=0"_qs);
        show(records);
        QCOMPARE(box.checkState(), static_cast<Qt::CheckState>(state.toInt()));
        QCOMPARE(told, state.toInt());
        for (int i = 0; i < 3; ++i)
            box.click();
        QCOMPARE(clicked.join(u' '), clicks);
    }

private:
    void show(const QString& texts)
    {
        records_.clear();
        for (const auto& text : texts.split(u' ', Qt::SkipEmptyParts))
            records_.push_back(AudioFile::fromPropertyMap(propertyMap(text), {}, 0));
        pane_->showSummary(SelectionSummary(records_));
    }
    /// Types into a field, all of which is selected: written as "TITLE:New⇥".
    TagField& begin(const QString& typed)
    {
        auto& edited = field(typed.section(u':', 0, 0));
        edited.setFocus(Qt::TabFocusReason);
        edited.selectAll();
        type(typed.section(u':', 1));
        return edited;
    }
    /// ⌃, ⌥, ⇧, ◆ and ⇮ (AltGr) are held for the next key. An input method composes at …, gives that up at ∅, and
    /// inserts what is not ASCII.
    static void type(const QString& typed)
    {
        static const QMap<QChar, Qt::Key> keys{
            {u'⇥', Qt::Key_Tab},       {u'⏎', Qt::Key_Return}, {u'⎋', Qt::Key_Escape},
            {u'⌫', Qt::Key_Backspace}, {u'⌦', Qt::Key_Delete}, {u'→', Qt::Key_Right},
            {u'⇱', Qt::Key_Home},      {u'⇲', Qt::Key_End},    {u'▾', Qt::Key_F4}};
        static const QMap<QChar, Qt::KeyboardModifier> modifiers{{u'⌃', Qt::ControlModifier},
                                                                 {u'⌥', Qt::AltModifier},
                                                                 {u'⇧', Qt::ShiftModifier},
                                                                 {u'◆', Qt::MetaModifier},
                                                                 {u'⇮', Qt::GroupSwitchModifier}};
        Qt::KeyboardModifiers held;
        for (const QChar c : typed) {
            auto* popup = QApplication::activePopupWidget();
            QWidget* receiver = popup ? popup->focusWidget() : QApplication::focusWidget();
            if (modifiers.contains(c)) {
                held |= modifiers[c];
                continue;
            }
            if (keys.contains(c)) {
                QTest::keyClick(receiver, keys[c], held);
            } else if (c.unicode() < 0x80) {
                QTest::keyClick(receiver, c.toLatin1(), held);
            } else {
                QInputMethodEvent event(c == u'…' ? u"x"_qs : QString(), {});
                event.setCommitString(c.isLetter() ? QString(c) : QString());
                QCoreApplication::sendEvent(receiver, &event);
            }
            held = {};
        }
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
    std::vector<AudioFilePtr> records_;
    std::unique_ptr<QSignalSpy> edited_;
};

QTEST_MAIN(EditorPaneTest)
#include "EditorPaneTest.moc"

#include "library/ui/EditorPane.h"

#include "library/ui/GenreBox.h"
#include "library/ui/GenreField.h"
#include "library/ui/TagField.h"
#include "model/NumberText.h"
#include "platform/ui/FieldLabel.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QStyle>

namespace {

QString withoutMnemonic(QString label)
{
    return label.remove(QLatin1Char('&'));
}

/// The year as the field shows it: whole numbers only.
QString shownYear(const SelectionSummary& summary)
{
    const QString year = summary.value(QStringLiteral("year"));
    QStringView digits = year;
    if (digits.startsWith(u'-') || digits.startsWith(u'+'))
        digits = digits.sliced(1);
    const bool isNumber = !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), [](QChar c) {
        return c >= u'0' && c <= u'9';
    });
    if (isNumber)
        return year;
    return year == NumberText::various ? NumberText::variousNumber : QString();
}

/// Shows that the selected files differ, but can only be clicked on and off.
class CompilationBox : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    void nextCheckState() override { setCheckState(checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked); }
};

} // namespace

EditorPane::EditorPane(QWidget* parent) : QWidget(parent), grid_(new QGridLayout), form_(new QWidget(this))
{
    auto* column = new QVBoxLayout(this);
    column->addWidget(form_);
    column->addStretch(1);
    form_->setLayout(grid_);
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setColumnStretch(1, 1);

    addField(QT_TR_NOOP("T&itle"), "TITLE", "title");
    addField(QT_TR_NOOP("&Artist"), "ARTIST", "artist");
    addField(QT_TR_NOOP("A&lbum"), "ALBUM", "album");
    addField(QT_TR_NOOP("Al&bum Artist"), "ALBUMARTIST", "albumArtist");
    addField(QT_TR_NOOP("&Year"), "YEAR", "year");
    addGenre();
    addNumbers(QT_TR_NOOP("Trac&k"), "TRACKNUM", "TRACKTOTAL", "track", tr("Track total"));
    addNumbers(QT_TR_NOOP("&Disc"), "DISCNUM", "DISCTOTAL", "disc", tr("Disc total"));
    addField(QT_TR_NOOP("&Comment"), "COMMENT", "comment");
    addCompilation();
    showSummary(SelectionSummary());
    connect(qApp, &QApplication::focusChanged, this, &EditorPane::noteFocus);
}

EditorPane::~EditorPane()
{
    // A field that loses the focus while it is destroyed ends its editing.
    qApp->disconnect(this);
    for (auto* field : std::as_const(fields_))
        field->disconnect(this);
}

void EditorPane::setHeader(QWidget* header)
{
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->insertWidget(0, header);
    column->insertSpacing(1, style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
}

void EditorPane::showSummary(const SelectionSummary& summary)
{
    const auto fill = summary.isOfSameRecords(shown_) ? &TagField::updateValue : &TagField::showValue;
    shown_ = summary;
    for (auto* field : std::as_const(fields_)) {
        const QString& name = field->summaryName();
        const bool isYear = name == QLatin1String("year");
        (field->*fill)(isYear ? shownYear(summary) : summary.shownValue(name), summary.isMixed(name));
    }
    showCompilation(summary.value(QStringLiteral("compilation"), QStringLiteral("0")));
    form_->setEnabled(!summary.isEmpty());
}

void EditorPane::endEditing()
{
    for (auto* field : std::as_const(fields_))
        field->commit();
}

void EditorPane::noteFocus(QWidget*, QWidget* now)
{
    // A field that the menu bar or another window has taken the focus from may not get it back.
    if (!now || now->window() != window() || qobject_cast<QMenuBar*>(now))
        return;
    for (auto* field : std::as_const(fields_)) {
        if (!field->hasFocus())
            field->commit();
    }
}

void EditorPane::focusFirstField()
{
    fields_.first()->setFocus(Qt::TabFocusReason);
}

QWidget* EditorPane::lastField() const
{
    return compilation_;
}

TagField* EditorPane::addField(const char* label, const char* key, const char* summaryName)
{
    auto* field = makeField(key, summaryName, withoutMnemonic(tr(label)));
    addRow(tr(label), field, field);
    return field;
}

void EditorPane::addGenre()
{
    genre_ = new GenreBox(form_);
    const QString label = tr("&Genre");
    genre_->setAccessibleName(withoutMnemonic(label));
    genre_->field().setAccessibleName(genre_->accessibleName());
    adopt(&genre_->field());
    addRow(label, genre_, genre_);
}

void EditorPane::addNumbers(const char* label, const char* key, const char* totalKey, const char* summaryPrefix,
                            const QString& totalName)
{
    const QByteArray prefix(summaryPrefix);
    const QString name = withoutMnemonic(tr(label));
    auto* row = new QWidget(form_);
    auto* number = makeField(key, (prefix + "Num").constData(), name);
    auto* total = makeField(totalKey, (prefix + "Total").constData(), totalName);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(number, 1);
    layout->addWidget(new QLabel(tr("of", "between a number and the total"), row));
    layout->addWidget(total, 1);
    addRow(tr(label), number, row);
}

void EditorPane::addCompilation()
{
    compilation_ = new CompilationBox(tr("C&ompilation"), form_);
    connect(compilation_, &QCheckBox::clicked, this,
            [this] { emit compilationClicked(QString::number(compilation_->isChecked())); });
    grid_->addWidget(compilation_, grid_->rowCount(), 1);
}

void EditorPane::addRow(const QString& label, QWidget* buddy, QWidget* contents)
{
    const int row = grid_->rowCount();
    grid_->addWidget(FieldLabel::make(label, buddy), row, 0, Qt::AlignRight | Qt::AlignVCenter);
    grid_->addWidget(contents, row, 1);
}

TagField* EditorPane::makeField(const char* key, const char* summaryName, const QString& accessibleName)
{
    auto* field = new TagField(QLatin1String(key), QLatin1String(summaryName), form_);
    field->setAccessibleName(accessibleName);
    adopt(field);
    return field;
}

void EditorPane::adopt(TagField* field)
{
    field->setObjectName(field->key());
    fields_.append(field);
    connect(field, &TagField::edited, this, &EditorPane::edited);
    connect(field, &TagField::rowStepWanted, this, &EditorPane::rowStepWanted);
}

void EditorPane::showCompilation(const QString& value)
{
    const bool isMixed = value != QLatin1String("0") && value != QLatin1String("1");
    compilation_->setCheckState(isMixed                       ? Qt::PartiallyChecked
                                : value == QLatin1String("1") ? Qt::Checked
                                                              : Qt::Unchecked);
    compilation_->setTristate(isMixed);
}

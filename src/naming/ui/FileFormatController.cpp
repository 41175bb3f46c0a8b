#include "naming/ui/FileFormatController.h"

#include "naming/FileNameFormat.h"
#include "naming/ui/RenamePlanModel.h"
#include "naming/ui/TokenButton.h"
#include "naming/ui/TokenChip.h"
#include "naming/ui/TokenField.h"
#include "platform/ui/DesktopWindow.h"
#include "platform/ui/FieldLabel.h"
#include "platform/ui/NameDelegate.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTableView>
#include <QTextDocument>

#include <utility>

namespace {

constexpr QSize initialSize(720, 500);
constexpr QSize leastSize(560, 380);
constexpr int margin = 20;
constexpr int leastColumnWidth = 120;
constexpr int summarySpace = 12;
constexpr int planDelay = 60;
constexpr int paletteWidth = 5;

/// @param textTop where the text beside it begins, so that both stand on one line.
void addLabel(QGridLayout& grid, const QString& text, QWidget* buddy, qreal textTop)
{
    auto* label = FieldLabel::make(text, buddy);
    label->setContentsMargins(label->contentsMargins() + QMargins(0, qRound(textTop), 0, 0));
    grid.addWidget(label, grid.rowCount(), 0, Qt::AlignRight | Qt::AlignTop);
}

/// Where the text of a chip begins.
qreal chipTextTop(const QFont& font)
{
    return (TokenChip::size({}, font).height() - QFontMetricsF(font).height()) / 2;
}

} // namespace

FileFormatController::FileFormatController(std::vector<AudioFilePtr> records, UserDefaults& defaults, QWidget* parent)
    : QDialog(parent), records_(std::move(records)), defaults_(defaults)
{
    setWindowTitle(tr("Rename Files"));
    DesktopWindow::moveByBackground(*this);
    setMinimumSize(leastSize);
    resize(initialSize);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setColumnStretch(1, 1);
    buildFormat(*grid);
    buildPlan(*grid);
    buildButtons(*grid);

    planDue_.setSingleShot(true);
    planDue_.setInterval(planDelay);
    connect(&planDue_, &QTimer::timeout, this, &FileFormatController::showPlan);
    connect(tokenField_, &TokenField::tokensChanged, this, &FileFormatController::showPreview);
    connect(this, &QDialog::finished, this, &FileFormatController::windowWillClose);
    tokenField_->setTokens(FileNameFormat::storedTokens(defaults));
    tokenField_->moveCursor(QTextCursor::End);
    tokenField_->setFocus();
    showPreview();
    showPlan();
}

void FileFormatController::buildFormat(QGridLayout& grid)
{
    tokenField_ = new TokenField;
    tokenField_->setObjectName(QStringLiteral("tokenField"));
    tokenField_->setAccessibleName(tr("Format"));
    const QFont font = tokenField_->font();
    addLabel(grid, tr("&Format"), tokenField_,
             tokenField_->frameWidth() + tokenField_->document()->documentMargin() + chipTextTop(font)
                 - TokenChip::lift(font));
    grid.addWidget(tokenField_, grid.rowCount() - 1, 1);
    grid.addWidget(buildDefault(), grid.rowCount() - 1, 2, Qt::AlignTop);

    const QStringList& keys = FileNameFormat::sortedKeys();
    auto* palette = buildPalette(keys.first(paletteWidth));
    addLabel(grid, tr("Fields"), palette, chipTextTop(font));
    grid.addWidget(palette, grid.rowCount() - 1, 1, 1, -1);
    grid.addWidget(buildPalette(keys.mid(paletteWidth)), grid.rowCount(), 1, 1, -1);

    previewField_ = new QLabel;
    previewField_->setObjectName(QStringLiteral("previewField"));
    previewField_->setTextFormat(Qt::PlainText);
    previewField_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    previewField_->setWordWrap(true);
    addLabel(grid, tr("Preview"), previewField_, 0);
    grid.addWidget(previewField_, grid.rowCount() - 1, 1, 1, -1);
}

QPushButton* FileFormatController::buildDefault()
{
    auto* button = new QPushButton(tr("&Default"));
    button->setObjectName(QStringLiteral("default"));
    button->setToolTip(tr("Bring the first format back"));
    button->setAutoDefault(false);
    connect(button, &QAbstractButton::clicked, this, [this] {
        // So that it can be undone in the field.
        tokenField_->selectAll();
        tokenField_->insertTokens(FileNameFormat::defaultTokens());
    });
    return button;
}

QWidget* FileFormatController::buildPalette(const QStringList& tokens)
{
    auto* palette = new QWidget;
    auto* row = new QHBoxLayout(palette);
    row->setContentsMargins(0, 0, 0, 0);
    for (const auto& token : tokens) {
        auto* button = new TokenButton(token);
        button->setObjectName(token);
        connect(button, &QAbstractButton::clicked, this, [this, token] { tokenField_->insertTokens({token}); });
        row->addWidget(button);
    }
    row->addStretch(1);
    return palette;
}

void FileFormatController::buildPlan(QGridLayout& grid)
{
    plan_ = new RenamePlanModel;
    plan_->setParent(this);
    auto* table = new QTableView;
    table->setObjectName(QStringLiteral("plan"));
    table->setAccessibleName(tr("Plan"));
    table->setModel(plan_);
    table->setItemDelegate(new NameDelegate(table));
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setShowGrid(false);
    table->setAlternatingRowColors(true);
    table->setWordWrap(false);
    table->setTabKeyNavigation(false);
    table->setTextElideMode(Qt::ElideMiddle);
    table->verticalHeader()->hide();
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(table->fontMetrics().height() + 6);
    auto* header = table->horizontalHeader();
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setResizeContentsPrecision(0);
    header->setMinimumSectionSize(leastColumnWidth);
    header->setSectionResizeMode(QHeaderView::Stretch);
    header->setSectionResizeMode(RenamePlanModel::Remark, QHeaderView::ResizeToContents);
    grid.addWidget(table, grid.rowCount(), 0, 1, -1);
    grid.setRowStretch(grid.rowCount() - 1, 1);

    auto* row = new QHBoxLayout;
    summary_ = new QLabel;
    summary_->setObjectName(QStringLiteral("summary"));
    onlyFailing_ = new QCheckBox(tr("&Show only these"));
    connect(onlyFailing_, &QCheckBox::toggled, plan_, &RenamePlanModel::showOnlyFailing);
    row->addWidget(summary_);
    row->addSpacing(summarySpace);
    row->addWidget(onlyFailing_);
    row->addStretch(1);
    grid.addLayout(row, grid.rowCount(), 0, 1, -1);
}

void FileFormatController::buildButtons(QGridLayout& grid)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    // The box makes one that accepts the button that Return presses from anywhere.
    rename_ = buttons->addButton(tr("&Rename"), QDialogButtonBox::YesRole);
    rename_->setObjectName(QStringLiteral("rename"));
    rename_->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Cancel)->setAutoDefault(false);
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter}) {
        const QKeySequence shortcut(Qt::CTRL | key);
        connect(new QShortcut(shortcut, this), &QShortcut::activated, this, &FileFormatController::updateFileNames);
        if (key == Qt::Key_Return)
            rename_->setToolTip(shortcut.toString(QKeySequence::NativeText));
    }
    connect(buttons, &QDialogButtonBox::accepted, this, &FileFormatController::updateFileNames);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    grid.addWidget(buttons, grid.rowCount(), 0, 1, -1);
}

void FileFormatController::updateFileNames()
{
    // What was typed last may not be in it yet.
    if (planDue_.isActive())
        showPlan();
    if (renamed() == 0)
        return;
    emit renameWanted(records_, tokenField_->tokens());
    close();
}

void FileFormatController::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
    else if (auto* button = qobject_cast<QPushButton*>(focusWidget()))
        button->click();
}

void FileFormatController::changeEvent(QEvent* event)
{
    QDialog::changeEvent(event);
    // Files may have come or gone while another program was used.
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        planDue_.start();
}

void FileFormatController::showPreview()
{
    previewField_->setText(
        records_.empty() ? QString() : FileNameFormat::buildFileName(tokenField_->tokens(), *records_.front()));
    planDue_.start();
}

void FileFormatController::showPlan()
{
    planDue_.stop();
    plan_->setPlan(RenamePlan(records_, tokenField_->tokens()));
    rename_->setEnabled(renamed() > 0);
    const bool anyFailing = plan_->plan().failing() > 0;
    if (!anyFailing)
        onlyFailing_->setChecked(false);
    onlyFailing_->setVisible(anyFailing);
    summary_->setText(planText());
}

int FileFormatController::renamed() const
{
    const RenamePlan& plan = plan_->plan();
    return static_cast<int>(plan.entries().size()) - plan.failing() - plan.unchanged();
}

QString FileFormatController::planText() const
{
    const RenamePlan& plan = plan_->plan();
    QString text = tr("%Ln files will be renamed", nullptr, renamed());
    if (plan.unchanged() > 0)
        text = tr("%1, %Ln unchanged", "%1 tells how many files will be renamed", plan.unchanged()).arg(text);
    if (plan.failing() > 0)
        text = tr("%1, %Ln can't be", "%1 tells how many files will be renamed", plan.failing()).arg(text);
    return text;
}

void FileFormatController::windowWillClose()
{
    FileNameFormat::storeTokens(defaults_, tokenField_->tokens());
}

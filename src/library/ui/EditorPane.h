#pragma once

#include "library/SelectionSummary.h"

#include <QList>
#include <QWidget>

class GenreBox;
class QCheckBox;
class QGridLayout;
class TagField;

/// The fields beside the list: what the selected records have in common, and where it is edited.
class EditorPane : public QWidget {
    Q_OBJECT

public:
    explicit EditorPane(QWidget* parent = nullptr);
    ~EditorPane() override;

    /// Puts a widget (the art well) above the fields.
    void setHeader(QWidget* header);

    /// Fills every field; the fields are enabled unless the summary is that of an empty selection. While the same
    /// records are selected, an edit in progress goes on, and the cursor stays where it is.
    void showSummary(const SelectionSummary& summary);
    /// Ends an edit in progress: it is emitted before this returns.
    void endEditing();
    /// Puts the keyboard focus into the first field.
    void focusFirstField();
    /// The last one that Tab leads to.
    QWidget* lastField() const;

signals:
    void edited(const QString& key, const QString& value);
    /// The compilation box was clicked and is now on ("1") or off ("0").
    void compilationClicked(const QString& state);
    void rowStepWanted(int step);

private:
    void noteFocus(QWidget* before, QWidget* now);
    TagField* addField(const char* label, const char* key, const char* summaryName);
    void addGenre();
    void addNumbers(const char* label, const char* key, const char* totalKey, const char* summaryPrefix,
                    const QString& totalName);
    void addCompilation();
    void addRow(const QString& label, QWidget* buddy, QWidget* contents);
    TagField* makeField(const char* key, const char* summaryName, const QString& accessibleName);
    void adopt(TagField* field);
    void showCompilation(const QString& value);

    QGridLayout* grid_;
    QList<TagField*> fields_;
    GenreBox* genre_ = nullptr;
    QCheckBox* compilation_ = nullptr;
    QWidget* form_;
    SelectionSummary shown_;
};

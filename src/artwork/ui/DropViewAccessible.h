#pragma once

#include <QAccessibleWidget>

/// The art well as a button: pressing it asks for another image, its menu has the commands. The description tells what
/// is shown; the parts that the well is painted by are nobody's business.
class DropViewAccessible : public QAccessibleWidget {
public:
    /// Has every art well described by this class.
    static void install();

    int childCount() const override { return 0; }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

private:
    explicit DropViewAccessible(QWidget* well);
};

#pragma once

#include "FieldValidator.h"
#include "ui_Assessor.h"

#include <QDialog>
#include <QList>
#include <QStringList>

/// Edits the record of the person or practice that runs the tests.
class Assessor : public QDialog
{
    Q_OBJECT

public:
    explicit Assessor(QWidget *parent = nullptr);

public Q_SLOTS:
    /// Opens the dialog with the record as it is filed; empty if there is none that can be read.
    void goAssessor();
    void toCob_title(int index);
    void toLe_lastName();
    void toLe_firstName();
    void toLe_institution();
    void toLe_street();
    void toLe_postalCode();
    void toLe_city();
    void toLe_country();
    /// Files the record, raises the store's flag and closes. A record that can't be written is told
    /// in a box, and the dialog stays open with what was typed.
    void toPb_ok();
    void toPb_cancel();

private:
    void raiseAllFonts();
    void connectFields();
    /// The line edits that are filed, in the order of the record behind its title.
    QList<QLineEdit *> fields() const;
    void fill(const QStringList &record);
    QStringList entered() const;

    Ui::AssessorClass m_ui;
    FieldValidator m_validator{FieldValidator::Use::Text};
};

#pragma once

#include "FieldValidator.h"
#include "ui_NewPatient.h"

#include <QDialog>

class Calibration;

/// Takes a new patient's gender, names and date of birth, and leaves them in the session store for
/// the main window, which registers the patient.
class NewPatient : public QDialog
{
    Q_OBJECT

public:
    explicit NewPatient(QWidget *parent = nullptr);

public Q_SLOTS:
    /// Opens the dialog, empty. A date of birth has to be entered before "Ok" can be pressed.
    void goNewPatient();
    void toCob_genre(int index);
    void toLe_lastName();
    void toLe_firstName();
    void toDe_dateOfBirth(QDate date);
    /// Fills the store and raises its flag. Gender and names may be empty.
    void toPb_ok();
    void toPb_cancel();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectFields();
    bool takeDateKey(const QKeyEvent &press);

    Ui::NewPatientClass m_ui;
    Calibration *m_calibration;
    FieldValidator m_validator{FieldValidator::Use::Key};
    int m_defaultYear = 1900; ///< the year at which the date stands before it is entered
};

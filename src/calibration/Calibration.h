#pragma once
// The store is read through slots, getters though they are: clazy:excludeall=const-signal-or-slot

#include "ui_Calibration.h"

#include <QDate>
#include <QDialog>
#include <QString>

class QLabel;

/// The measurement of the screen with a ruler, and at the same time the handle on the session
/// store: a value that is set through one object is read through all.
class Calibration : public QDialog
{
    Q_OBJECT

public:
    explicit Calibration(QWidget *parent = nullptr);

public Q_SLOTS:
    /// Opens the dialog at its first line.
    void goCalibration();
    void toLe_horzPitch();
    void toLe_vertPitch();

    /// Reads screen.pix into the store. If it can't be opened a box says so.
    void goReadParam();
    /// Reads screen.pix, sets the frequency (0: 60 Hz, 1: 120 Hz) and writes the file again. What
    /// fails is told in a box; the new frequency then holds for this run.
    void setFrequency(int index);
    int isFrequency() const;
    void setLanguage(int number);
    int isLanguage() const;
    /// Width of a pixel in micrometres, 0 before the first calibration.
    int isHorzPitch() const;
    /// Height of a pixel in micrometres, 0 before the first calibration.
    int isVertPitch() const;

    void setPitchError(bool refused);
    bool isPitchError() const;

    void setPatientName(const QString &key);
    QString isPatientName() const;
    void setGender(const QString &gender);
    QString isGender() const;
    void setLastName(const QString &name);
    QString isLastName() const;
    void setFirstName(const QString &name);
    QString isFirstName() const;
    void setDob(const QDate &date);
    QDate isDob() const;

    void setNewPatient(bool waiting);
    bool isNewPatient() const;
    void setAssessor(bool changed);
    bool isAssessor() const;
    void setEscapeSeq(bool ended);
    bool isEscapeSeq() const;

    void setSessionNb_T1(int number);
    int isSessionNb_T1() const;
    void setSessionNb_T2(int number);
    int isSessionNb_T2() const;
    void setSessionNb_T3(int number);
    int isSessionNb_T3() const;
    void setSessionNb_T4(int number);
    int isSessionNb_T4() const;
    void setSessionNb_T5(int number);
    int isSessionNb_T5() const;
    void setSessionNb_T6(int number);
    int isSessionNb_T6() const;
    void setSessionNb_T7(int number);
    int isSessionNb_T7() const;

    /// The word for a phase of a task, translated: 0 "INSTRUCTIONS", 1 "TRAINING", 2 "PAUSE",
    /// 3 "ERROR".
    QString isMode(int index) const;
    QString isSiteCode() const;

protected:
    /// Escape closes; no other key does anything.
    void keyPressEvent(QKeyEvent *event) override;
    /// Nothing is read from a field any more, so that a half-typed number is none.
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void showOnWholeScreen();
    void place();
    void tellSmallScreen();
    void listen();
    void startAtHorizontalLine();
    void goToVerticalLine();
    void refuse(QLineEdit *edit);
    void warnScreenFile(const QString &error);

    Ui::CalibrationClass m_ui;
    QLabel *m_smallScreen; ///< shown where a line is longer than the screen
    int m_centerX = 0;     ///< centre of the full-screen dialog, pixels
    int m_centerY = 0;
    bool m_reading = false; ///< an entry is being read; the field may lose its focus meanwhile
};

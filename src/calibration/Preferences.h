#pragma once

#include "ui_Preferences.h"

#include <QDialog>

class Calibration;

/// What the program knows about the screen. Only the frequency can be changed here, and the
/// calibration be run again.
class Preferences : public QDialog
{
    Q_OBJECT

public:
    explicit Preferences(QWidget *parent = nullptr);

public Q_SLOTS:
    /// Opens the dialog with the resolution of the screen and the values of the store as they are
    /// now.
    void goPreferences();
    /// Calibrates again; a frequency that was chosen is dropped.
    void toPb_reCalibrate();
    /// Files the frequency and closes. What can't be written is told in a box; the frequency then
    /// holds for this run.
    void toPb_ok();
    void toPb_cancel();

private:
    void raiseAllFonts();

    Ui::PreferencesClass m_ui;
    Calibration *m_calibration;
};

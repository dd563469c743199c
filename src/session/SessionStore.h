#pragma once

#include <QDate>
#include <QString>

#include <array>

/// The shared state of one run of the program: the screen, the language, the chosen patient, the
/// session numbers, and the words that the dialogs leave for the main window. There is one copy,
/// and every `Calibration` object is a handle on it. What outlives the run is in the files.
struct SessionStore
{
    int horzPixel = 0; ///< width of a pixel in micrometres; 0: never calibrated
    int vertPixel = 0; ///< height of a pixel in micrometres
    int frequency = 0; ///< index into tables::_frequency
    int language = 0;  ///< index into tables::_language

    QString patientName; ///< the patient's key: last name, first name, date of birth
    QString gender;
    QString lastName;
    QString firstName;
    QDate dob;
    std::array<int, 7> sessionNb{}; ///< by test button, T1 to T7
    QString unread; ///< why the patient's line couldn't be read: the numbers may be another's
    QString siteCode;

    // Mailboxes: set by a dialog, cleared by the main window's timer.
    bool pitchError = false; ///< a calibration entry was refused
    bool newPatient = false; ///< a patient is to be registered
    bool assessor = false;   ///< the assessor's record has changed
    bool escapeSeq = false;  ///< a task ended other than normally
};

/// The one copy.
SessionStore &sessionStore();

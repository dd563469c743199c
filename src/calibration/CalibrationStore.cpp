#include "Calibration.h"

#include "Messages.h"
#include "SessionStore.h"
#include "screenFile.h"

#include <QLoggingCategory>

#include <array>

// The state side of the class: every object reads and writes the one store.

Q_LOGGING_CATEGORY(lcCalibration, "kelmoran.calibration", QtCriticalMsg)

void Calibration::warnScreenFile(const QString &error)
{
    messages::warning(this, tr("Error"),
                      tr("Failed to open %1\n%2").arg(QLatin1String(screenFile::name), error));
}

void Calibration::goReadParam()
{
    const QString error = screenFile::read();
    if (!error.isEmpty())
        warnScreenFile(error);
}

void Calibration::setFrequency(int index)
{
    const QString unread = screenFile::read();
    if (!unread.isEmpty())
        warnScreenFile(unread);
    sessionStore().frequency = index;
    // A file that can't be read now may hold the size of a pixel. Without one in the store it
    // stays.
    if (!unread.isEmpty() && screenFile::exists() && sessionStore().horzPixel == 0)
        return;
    const QString error = screenFile::write();
    if (error.isEmpty())
        qCDebug(lcCalibration, "frequency %d", index);
    else
        warnScreenFile(error);
}

int Calibration::isHorzPitch() const
{
    qCDebug(lcCalibration, "horzPixel %6d", sessionStore().horzPixel);
    return sessionStore().horzPixel;
}

int Calibration::isVertPitch() const
{
    qCDebug(lcCalibration, "vertPixel %6d", sessionStore().vertPixel);
    return sessionStore().vertPixel;
}

QString Calibration::isMode(int index) const
{
    const std::array words{tr("INSTRUCTIONS"), tr("TRAINING"), tr("PAUSE"), tr("ERROR")};
    return words.at(std::size_t(index));
}

// clang-format off
int Calibration::isFrequency() const { return sessionStore().frequency; }
QString Calibration::isSiteCode() const { return sessionStore().siteCode; }
void Calibration::setLanguage(int value) { sessionStore().language = value; }
int Calibration::isLanguage() const { return sessionStore().language; }
void Calibration::setPitchError(bool value) { sessionStore().pitchError = value; }
bool Calibration::isPitchError() const { return sessionStore().pitchError; }
void Calibration::setPatientName(const QString &value) { sessionStore().patientName = value; }
QString Calibration::isPatientName() const { return sessionStore().patientName; }
void Calibration::setGender(const QString &value) { sessionStore().gender = value; }
QString Calibration::isGender() const { return sessionStore().gender; }
void Calibration::setLastName(const QString &value) { sessionStore().lastName = value; }
QString Calibration::isLastName() const { return sessionStore().lastName; }
void Calibration::setFirstName(const QString &value) { sessionStore().firstName = value; }
QString Calibration::isFirstName() const { return sessionStore().firstName; }
void Calibration::setDob(const QDate &value) { sessionStore().dob = value; }
QDate Calibration::isDob() const { return sessionStore().dob; }
void Calibration::setNewPatient(bool value) { sessionStore().newPatient = value; }
bool Calibration::isNewPatient() const { return sessionStore().newPatient; }
void Calibration::setAssessor(bool value) { sessionStore().assessor = value; }
bool Calibration::isAssessor() const { return sessionStore().assessor; }
void Calibration::setEscapeSeq(bool value) { sessionStore().escapeSeq = value; }
bool Calibration::isEscapeSeq() const { return sessionStore().escapeSeq; }
void Calibration::setSessionNb_T1(int value) { sessionStore().sessionNb[0] = value; }
int Calibration::isSessionNb_T1() const { return sessionStore().sessionNb[0]; }
void Calibration::setSessionNb_T2(int value) { sessionStore().sessionNb[1] = value; }
int Calibration::isSessionNb_T2() const { return sessionStore().sessionNb[1]; }
void Calibration::setSessionNb_T3(int value) { sessionStore().sessionNb[2] = value; }
int Calibration::isSessionNb_T3() const { return sessionStore().sessionNb[2]; }
void Calibration::setSessionNb_T4(int value) { sessionStore().sessionNb[3] = value; }
int Calibration::isSessionNb_T4() const { return sessionStore().sessionNb[3]; }
void Calibration::setSessionNb_T5(int value) { sessionStore().sessionNb[4] = value; }
int Calibration::isSessionNb_T5() const { return sessionStore().sessionNb[4]; }
void Calibration::setSessionNb_T6(int value) { sessionStore().sessionNb[5] = value; }
int Calibration::isSessionNb_T6() const { return sessionStore().sessionNb[5]; }
void Calibration::setSessionNb_T7(int value) { sessionStore().sessionNb[6] = value; }
int Calibration::isSessionNb_T7() const { return sessionStore().sessionNb[6]; }
// clang-format on

#include "Examiner.h"

#include "Screen.h"
#include "hands.h"

#include <QAction>
#include <QComboBox>
#include <QDateEdit>
#include <QLineEdit>

// What an assessor does at the main window before a test: the calibration, the patient, the
// preferences.

namespace {
constexpr int pace = 1200; // ms from seeing something to acting on it
constexpr int soon = 300;  // ms: longer than the main window takes to look into its mailboxes

/// Types into a field. False if it doesn't take every character.
bool enter(QLatin1String field, const QString &text)
{
    auto *edit = qobject_cast<QLineEdit *>(Screen::usable(field));
    if (!edit)
        return false;
    hands::type(edit, text);
    return edit->text() == text;
}

/// By the keyboard, from the item above, so that the box tells of a choice.
void chooseItem(QLatin1String box, int index)
{
    auto *combo = qobject_cast<QComboBox *>(Screen::usable(box));
    if (!combo || index < 0)
        return;
    combo->setFocus();
    combo->setCurrentIndex(index - 1);
    hands::pressOn(combo, Qt::Key_Down);
}

/// The dialog's items are translated, the genders of a list are not.
int genderItem(const QString &gender)
{
    return int(QStringList{QStringLiteral("Mr."), QStringLiteral("Mrs.")}.indexOf(gender));
}

void enterDate(const QDate &date)
{
    auto *edit = qobject_cast<QDateEdit *>(Screen::usable(QLatin1String("de_dateOfBirth")));
    if (!edit)
        return;
    // The dialog takes no date whose year was never changed.
    if (edit->date().year() == date.year())
        edit->setDate(edit->date().addYears(1));
    edit->setDate(date);
}
} // namespace

bool Examiner::calibrate()
{
    // The lines were measured with a ruler: 270 mm and 135 mm.
    const QLatin1String vertical("le_vertPitch");
    const QLatin1String horizontal("le_horzPitch");
    QWidget *edit = Screen::usable(vertical);
    const QString length = edit ? QStringLiteral("135") : QStringLiteral("270");
    if (!edit)
        edit = Screen::usable(horizontal);
    if (!edit)
        return false;
    hands::type(edit, length);
    hands::pressOn(edit, Qt::Key_Return);
    lookIn(pace);
    return true;
}

bool Examiner::fillInPatient()
{
    QWidget *ok = Screen::visible(QLatin1String("pb_ok"));
    if (!ok || !Screen::visible(QLatin1String("de_dateOfBirth")))
        return false;
    lookIn(pace);
    if (m_registered) { // all is filled in
        if (ok->isEnabled())
            hands::click(ok);
        else
            Q_EMIT refused(QStringLiteral("The patient can't be registered."));
        return true;
    }
    const Options::Patient &patient = m_options.patient;
    chooseItem(QLatin1String("cob_genre"), genderItem(patient.gender));
    if (!enter(QLatin1String("le_lastName"), patient.lastName) ||
        !enter(QLatin1String("le_firstName"), patient.firstName)) {
        Q_EMIT refused(QStringLiteral("The patient's dialog does not take the name \"%1\", \"%2\".")
                           .arg(patient.lastName, patient.firstName));
        return true;
    }
    enterDate(patient.dateOfBirth);
    m_registered = true;
    return true;
}

bool Examiner::setFrequency()
{
    auto *box = qobject_cast<QComboBox *>(Screen::usable(QLatin1String("cob_screenFreq")));
    QWidget *ok = Screen::usable(QLatin1String("pb_ok"));
    if (!box || !ok)
        return false;
    box->setCurrentIndex(m_options.frequency.value_or(box->currentIndex()));
    hands::click(ok);
    lookIn(pace);
    return true;
}

bool Examiner::openPreferences()
{
    if (m_frequencySet)
        return false;
    auto *entry = m_window.findChild<QAction *>(QStringLiteral("actionPreferences"));
    lookIn(pace);
    if (!entry || !entry->isEnabled())
        return true;
    m_frequencySet = true;
    entry->trigger();
    return true;
}

bool Examiner::choosePatient()
{
    const auto *list = m_window.findChild<QComboBox *>(QStringLiteral("cob_patientName"));
    if (!list)
        return false;
    const QString key = m_options.patient.key();
    if (!list->isEnabled()) {
        lookIn(soon);
    } else if (list->findText(key) < 0) {
        registerPatient(list);
    } else if (list->currentText() != key || !Screen::usable(QLatin1String("cb_parameters"))) {
        chooseItem(QLatin1String("cob_patientName"), list->findText(key));
        lookIn(pace);
    } else {
        return false;
    }
    return true;
}

void Examiner::registerPatient(const QComboBox *list)
{
    if (m_registered) {
        Q_EMIT refused(QStringLiteral("The patient \"%1\" does not stand in the list of %2 after "
                                      "the registration.")
                           .arg(m_options.patient.key(), QString::number(list->count())));
        return;
    }
    if (auto *entry = m_window.findChild<QAction *>(QStringLiteral("actionAdd_patient")))
        entry->trigger();
    lookIn(pace);
}

#include "Kelmoran.h"

#include "Calibration.h"
#include "Messages.h"
#include "SessionStore.h"
#include "parsed.h"
#include "patientsList.h"

#include <QListView>
#include <QLoggingCategory>

// The patients of the main window: the combo box, a registration, the choice of a patient.

Q_LOGGING_CATEGORY(lcPatients, "kelmoran.patients", QtCriticalMsg)

void Kelmoran::fillPatients()
{
    // Without this the box measures every patient each time that it opens.
    if (auto *items = qobject_cast<QListView *>(m_ui.cob_patientName->view()))
        items->setUniformItemSizes(true);
    patientsList::createIfMissing();
    QStringList keys;
    if (const auto patients = patientsList::read()) {
        for (const QStringList &fields : *patients) {
            qCDebug(lcPatients, "name %s", qPrintable(fields.join(u';')));
            keys.append(patientsList::key(fields));
        }
    }
    keys.sort();
    m_ui.cob_patientName->addItems(keys); // at once: each by itself would be told to the box
    m_ui.cob_patientName->setCurrentIndex(-1);
    qCDebug(lcPatients, "number %6d", m_ui.cob_patientName->count());
}

bool Kelmoran::registerPatient()
{
    m_calibration->setNewPatient(false);
    const SessionStore &store = sessionStore();
    // The line first: no patient stands in the box who doesn't stand in the file.
    const QString error =
        patientsList::append(store.gender, store.lastName, store.firstName, store.dob);
    if (!error.isEmpty()) {
        refuseRegistration(error);
        return false;
    }
    m_gender = store.gender;
    m_lastName = store.lastName;
    m_firstName = store.firstName;
    m_dob = store.dob;
    m_patientName = patientsList::key(m_lastName, m_firstName, m_dob);
    addPatient(m_patientName);
    sessionStore().sessionNb.fill(0);
    showSessionNumbers();
    toCob_patientName(0);
    return true;
}

void Kelmoran::refuseRegistration(const QString &error)
{
    SessionStore &store = sessionStore();
    store.gender = m_gender;
    store.lastName = m_lastName;
    store.firstName = m_firstName;
    store.dob = m_dob;
    messages::warning(this, tr("Error"),
                      tr("Failed to open %1\n%2").arg(QStringLiteral("output.csv"), error));
}

void Kelmoran::addPatient(const QString &key)
{
    QComboBox *box = m_ui.cob_patientName;
    const int place = placeInBox(key);
    box->insertItem(place, key);
    qCDebug(lcPatients, "number %6d", box->count());
    box->setCurrentIndex(place);
}

/// Where a patient belongs in the sorted box: behind those of the same key.
int Kelmoran::placeInBox(const QString &key) const
{
    int from = 0;
    int to = m_ui.cob_patientName->count();
    while (from < to) {
        const int middle = from + (to - from) / 2;
        if (m_ui.cob_patientName->itemText(middle) <= key)
            from = middle + 1;
        else
            to = middle;
    }
    return from;
}

void Kelmoran::toCob_patientName(int index)
{
    if (taskIsRunning()) { // behind the back of a test: it stays its patient's
        m_ui.cob_patientName->setCurrentText(m_calibration->isPatientName());
        return;
    }
    const QString chosen = m_ui.cob_patientName->currentText();
    qCDebug(lcPatients, "index %6d %s", index, qPrintable(chosen));
    enableTests();
    m_calibration->setPatientName(chosen);
    sessionStore().unread.clear();
    const QStringList fields = patientsList::find(chosen);
    if (!fields.isEmpty())
        takePatient(fields);
}

void Kelmoran::enableTests()
{
    for (QWidget *widget : std::initializer_list<QWidget *>{
             m_ui.pb_test1, m_ui.pb_test2, m_ui.pb_test3, m_ui.pb_test4, m_ui.pb_test5,
             m_ui.pb_test6, m_ui.pb_test7, m_ui.cb_withInstruction, m_ui.cb_withTraining,
             m_ui.cb_fixedDuration, m_ui.cb_parameters, m_ui.cb_subTask})
        widget->setEnabled(true);
    for (QLineEdit *field : sessionFields())
        field->setEnabled(true);
    m_ui.actionPrevious_reports->setEnabled(true);
}

void Kelmoran::takePatient(const QStringList &fields)
{
    qCDebug(lcPatients, "found %s", qPrintable(fields.join(u';')));
    m_patientName = patientsList::key(fields);
    m_gender = fields.value(patientsList::Gender);
    m_lastName = fields.value(patientsList::LastName);
    m_firstName = fields.value(patientsList::FirstName);
    m_dob =
        QDate::fromString(fields.value(patientsList::DateOfBirth), QStringLiteral("dd.MM.yyyy"));
    SessionStore &store = sessionStore();
    store.gender = m_gender;
    store.lastName = m_lastName;
    store.firstName = m_firstName;
    store.dob = m_dob;
    const auto sessions = sessionFields();
    for (std::size_t i = 0; i < sessions.size(); ++i) {
        const QString number = fields.value(patientsList::SessionT1 + qsizetype(i));
        sessions[i]->setText(number);
        store.sessionNb[i] = parsed::toInt(number);
    }
}

std::array<QLineEdit *, 7> Kelmoran::sessionFields() const
{
    return {m_ui.le_session1, m_ui.le_session2, m_ui.le_session3, m_ui.le_session4,
            m_ui.le_session5, m_ui.le_session6, m_ui.le_session7};
}

void Kelmoran::showSessionNumbers()
{
    const auto sessions = sessionFields();
    for (std::size_t i = 0; i < sessions.size(); ++i)
        sessions[i]->setText(QStringLiteral("%1").arg(sessionStore().sessionNb[i]));
}

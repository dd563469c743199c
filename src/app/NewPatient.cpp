#include "NewPatient.h"

#include "Calibration.h"
#include "fonts.h"

#include <QKeyEvent>
#include <QLoggingCategory>

Q_LOGGING_CATEGORY(lcNewPatient, "kelmoran.newPatient", QtCriticalMsg)

NewPatient::NewPatient(QWidget *parent)
    : QDialog(parent)
    , m_calibration(new Calibration(this))
{
    m_ui.setupUi(this);
    raiseFonts({m_ui.lbl_gender, m_ui.lbl_lastName, m_ui.lbl_firstName, m_ui.lbl_dateOfBirth}, 3);
    raiseFonts({m_ui.cob_genre, m_ui.le_lastName, m_ui.le_firstName, m_ui.de_dateOfBirth}, 3);
    m_ui.le_lastName->setValidator(&m_validator);
    m_ui.le_firstName->setValidator(&m_validator);
    m_ui.de_dateOfBirth->installEventFilter(this);
    connectFields();
}

void NewPatient::connectFields()
{
    connect(m_ui.cob_genre, &QComboBox::activated, this, &NewPatient::toCob_genre);
    connect(m_ui.le_lastName, &QLineEdit::returnPressed, this, &NewPatient::toLe_lastName);
    connect(m_ui.le_firstName, &QLineEdit::returnPressed, this, &NewPatient::toLe_firstName);
    connect(m_ui.de_dateOfBirth, &QDateEdit::dateChanged, this, &NewPatient::toDe_dateOfBirth);
    connect(m_ui.pb_ok, &QPushButton::clicked, this, &NewPatient::toPb_ok);
    connect(m_ui.pb_cancel, &QPushButton::clicked, this, &NewPatient::toPb_cancel);
}

void NewPatient::goNewPatient()
{
    show();
    m_ui.cob_genre->setCurrentIndex(-1);
    m_ui.le_lastName->clear();
    m_ui.le_firstName->clear();
    m_defaultYear = 1900;
    m_ui.de_dateOfBirth->setDate(QDate(m_defaultYear, 1, 1));
    m_ui.de_dateOfBirth->setDisplayFormat(QStringLiteral("dd.MM.yyyy"));
    m_ui.pb_ok->setEnabled(false);
    m_ui.cob_genre->setFocus();
}

void NewPatient::toCob_genre(int /*index*/)
{
    m_ui.le_lastName->setFocus();
}

void NewPatient::toLe_lastName()
{
    m_ui.le_firstName->setFocus();
}

void NewPatient::toLe_firstName()
{
    m_ui.de_dateOfBirth->setFocus();
    m_ui.de_dateOfBirth->setSelectedSection(QDateTimeEdit::DaySection);
}

void NewPatient::toDe_dateOfBirth(QDate date)
{
    if (date.year() != m_defaultYear)
        m_ui.pb_ok->setEnabled(true);
}

bool NewPatient::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && takeDateKey(*static_cast<QKeyEvent *>(event)))
        return true;
    return QDialog::eventFilter(watched, event);
}

/// A date is typed as it is written: 14.03.1952. After the second digit of the day the field goes
/// on to the month by itself, and the point that follows must not carry it on to the year.
bool NewPatient::takeDateKey(const QKeyEvent &press)
{
    QDateEdit *date = m_ui.de_dateOfBirth;
    const QString selected = date->findChild<QLineEdit *>()->selectedText();
    const bool startsAnew =
        selected == date->text() && !press.text().isEmpty() && press.text().front().isDigit();
    if (press.key() == Qt::Key_Home || startsAnew) {
        date->setSelectedSection(QDateTimeEdit::DaySection);
        return !startsAnew;
    }
    const bool separates = press.text() == u"." || press.text() == u"/" || press.text() == u"-" ||
                           press.text() == u" ";
    return separates && selected == date->sectionText(date->currentSection());
}

void NewPatient::toPb_ok()
{
    const QString gender = m_ui.cob_genre->currentText();
    const QString lastName = m_ui.le_lastName->text();
    const QString firstName = m_ui.le_firstName->text();
    const QDate dateOfBirth = m_ui.de_dateOfBirth->date();
    qCDebug(lcNewPatient, "%s", qPrintable(gender));
    qCDebug(lcNewPatient, "lastName %s", qPrintable(lastName));
    qCDebug(lcNewPatient, "firstName %s", qPrintable(firstName));
    qCDebug(lcNewPatient, "date of birth %s",
            qPrintable(dateOfBirth.toString(QStringLiteral("dd/MM/yyyy"))));

    m_calibration->setGender(gender);
    m_calibration->setLastName(lastName);
    m_calibration->setFirstName(firstName);
    m_calibration->setDob(dateOfBirth);
    m_calibration->setNewPatient(true);
    close();
}

void NewPatient::toPb_cancel()
{
    close();
}

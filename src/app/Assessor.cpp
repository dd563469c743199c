#include "Assessor.h"

#include "Messages.h"
#include "SessionStore.h"
#include "assessorRecord.h"
#include "fonts.h"

#include <QLoggingCategory>

#include <array>

Q_LOGGING_CATEGORY(lcAssessorDialog, "kelmoran.assessor", QtCriticalMsg)

namespace {

/// The item with this title as the form has it in English; -1 for any other, a translated one
/// included.
int indexOfTitle(const QString &title)
{
    constexpr std::array titles{QLatin1String("Mr."), QLatin1String("Mrs."), QLatin1String("Dr."),
                                QLatin1String("Prof.")};
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (title == titles.at(i))
            return int(i);
    }
    return -1;
}

void printRecord(const QStringList &record)
{
    constexpr std::array names{"",        "lastName ",   "firstName ", "institution ",
                               "street ", "postalCode ", "city ",      "country "};
    for (std::size_t i = 0; i < names.size(); ++i)
        qCDebug(lcAssessorDialog, "%s%s", names.at(i), qPrintable(record.value(qsizetype(i))));
}

} // namespace

Assessor::Assessor(QWidget *parent)
    : QDialog(parent)
{
    m_ui.setupUi(this);
    raiseAllFonts();
    const auto edits = fields();
    for (QLineEdit *edit : edits)
        edit->setValidator(&m_validator);
    connectFields();
}

void Assessor::raiseAllFonts()
{
    raiseFonts({m_ui.lbl_title, m_ui.lbl_lastName, m_ui.lbl_firstName, m_ui.lbl_institution,
                m_ui.lbl_street, m_ui.lbl_firstName_2, m_ui.lbl_postalCode, m_ui.lbl_city,
                m_ui.lbl_country},
               3);
    raiseFonts({m_ui.cob_title, m_ui.le_lastName, m_ui.le_firstName, m_ui.le_institution,
                m_ui.le_street, m_ui.le_firstName_2, m_ui.le_postalCode, m_ui.le_city,
                m_ui.le_country},
               3);
}

void Assessor::connectFields()
{
    connect(m_ui.cob_title, &QComboBox::activated, this, &Assessor::toCob_title);
    connect(m_ui.le_lastName, &QLineEdit::returnPressed, this, &Assessor::toLe_lastName);
    connect(m_ui.le_firstName, &QLineEdit::returnPressed, this, &Assessor::toLe_firstName);
    connect(m_ui.le_institution, &QLineEdit::returnPressed, this, &Assessor::toLe_institution);
    connect(m_ui.le_street, &QLineEdit::returnPressed, this, &Assessor::toLe_street);
    connect(m_ui.le_postalCode, &QLineEdit::returnPressed, this, &Assessor::toLe_postalCode);
    connect(m_ui.le_city, &QLineEdit::returnPressed, this, &Assessor::toLe_city);
    connect(m_ui.le_country, &QLineEdit::returnPressed, this, &Assessor::toLe_country);
    connect(m_ui.pb_ok, &QPushButton::clicked, this, &Assessor::toPb_ok);
    connect(m_ui.pb_cancel, &QPushButton::clicked, this, &Assessor::toPb_cancel);
}

QList<QLineEdit *> Assessor::fields() const
{
    return {m_ui.le_lastName,   m_ui.le_firstName, m_ui.le_institution, m_ui.le_street,
            m_ui.le_postalCode, m_ui.le_city,      m_ui.le_country};
}

void Assessor::goAssessor()
{
    show();
    fill(assessorRecord::read().value_or(QStringList()));
    m_ui.cob_title->setFocus();
}

void Assessor::fill(const QStringList &record)
{
    m_ui.cob_title->setCurrentIndex(
        indexOfTitle(assessorRecord::field(record, assessorRecord::Title)));
    const auto edits = fields();
    for (qsizetype i = 0; i < edits.size(); ++i) {
        edits.at(i)->setValidator(nullptr); // a record made by hand is shown as it stands
        edits.at(i)->setText(record.value(assessorRecord::LastName + i));
        edits.at(i)->setValidator(&m_validator);
    }
}

QStringList Assessor::entered() const
{
    QStringList record{m_ui.cob_title->currentText()};
    const auto edits = fields();
    for (const QLineEdit *edit : edits)
        record.append(edit->text());
    return record;
}

void Assessor::toCob_title(int /*index*/)
{
    m_ui.le_lastName->setFocus();
}

void Assessor::toLe_lastName()
{
    m_ui.le_firstName->setFocus();
}

void Assessor::toLe_firstName()
{
    m_ui.le_institution->setFocus();
}

void Assessor::toLe_institution()
{
    m_ui.le_street->setFocus();
}

void Assessor::toLe_street()
{
    m_ui.le_postalCode->setFocus();
}

void Assessor::toLe_postalCode()
{
    m_ui.le_city->setFocus();
}

void Assessor::toLe_city()
{
    m_ui.le_country->setFocus();
}

void Assessor::toLe_country()
{
    // The path ends here.
}

void Assessor::toPb_ok()
{
    const QStringList record = entered();
    printRecord(record);
    const QString error = assessorRecord::write(record);
    if (!error.isEmpty()) {
        messages::warning(this, tr("Error"),
                          tr("Failed to open %1\n%2").arg(QStringLiteral("assessor.txt"), error));
        return;
    }
    sessionStore().assessor = true;
    close();
}

void Assessor::toPb_cancel()
{
    close();
}

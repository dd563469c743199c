#include "Calibration.h"

#include "Messages.h"
#include "SessionStore.h"
#include "parsed.h"
#include "screenFile.h"
#include "screens.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLoggingCategory>
#include <QScopedValueRollback>
#include <QScreen>

#include <algorithm>
#include <limits>

// The dialog side of the class. A line of 1000 pixels measured in millimetres gives, as the same
// number, the width of a pixel in micrometres.

Q_DECLARE_LOGGING_CATEGORY(lcCalibration)

namespace {

constexpr int smallestPixel = 100; ///< micrometres; anything below wasn't measured in millimetres
constexpr int verticalFactor = 2;  ///< the vertical line has 500 pixels
constexpr QSize bothLines(1002, 502); ///< the least screen on which both are seen with their ends

/// The height of a pixel in micrometres; a length beyond all numbers stays the greatest one.
int heightOfPixel(int millimetres)
{
    constexpr int most = std::numeric_limits<int>::max() / verticalFactor;
    return verticalFactor * std::clamp(millimetres, -most, most);
}

} // namespace

Calibration::Calibration(QWidget *parent)
    : QDialog(parent)
    , m_smallScreen(new QLabel(this))
{
    m_ui.setupUi(this);
    m_smallScreen->setObjectName(QStringLiteral("lbl_smallScreen"));
    m_smallScreen->setStyleSheet(QStringLiteral("color: rgb(255, 255, 255);"));
    m_smallScreen->setFont(m_ui.lbl_horzPitch->font());
    m_smallScreen->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_smallScreen->setWordWrap(true);
}

void Calibration::goCalibration()
{
    showOnWholeScreen();
    place();
    listen();
    startAtHorizontalLine();
    sessionStore().frequency = 0;
}

/// Full-screen, with the final size at once: some window managers give it only later.
void Calibration::showOnWholeScreen()
{
    setGeometry(screens::of(*this)->geometry());
    showFullScreen();
    raise();
    activateWindow();
}

void Calibration::place()
{
    m_centerX = width() / 2;
    m_centerY = height() / 2;
    for (QLabel *label : {m_ui.lbl_horzPitch, m_ui.lbl_vertPitch})
        label->move(m_centerX - 500, m_centerY - 300);
    for (QLineEdit *edit : {m_ui.le_horzPitch, m_ui.le_vertPitch})
        edit->move(m_centerX - 220, m_centerY - 300);
    for (QFrame *frame : {m_ui.fr_vertCalibration, m_ui.fr_horzCalibration})
        frame->move(m_centerX - frame->width() / 2, m_centerY - frame->height() / 2);
    tellSmallScreen();
}

/// A line that is cut by the edges of the screen has no ends to be measured.
void Calibration::tellSmallScreen()
{
    constexpr int margin = 20;
    m_smallScreen->setGeometry(margin, m_centerY + 2 * margin, m_centerX - 3 * margin,
                               m_centerY - 3 * margin);
    m_smallScreen->setText(
        tr("This screen is too small: it has %1 by %2 pixels, and the lines need %3 by %4. "
           "A length measured here would be wrong. Choose a higher resolution or a smaller "
           "scaling of the desktop, and calibrate again.")
            .arg(width())
            .arg(height())
            .arg(bothLines.width())
            .arg(bothLines.height()));
    m_smallScreen->setVisible(screens::isTooSmall(size(), bothLines));
}

void Calibration::listen()
{
    connect(m_ui.le_horzPitch, &QLineEdit::editingFinished, this, &Calibration::toLe_horzPitch,
            Qt::UniqueConnection);
    connect(m_ui.le_vertPitch, &QLineEdit::editingFinished, this, &Calibration::toLe_vertPitch,
            Qt::UniqueConnection);
}

void Calibration::startAtHorizontalLine()
{
    // A field that hides gives up its focus, which must not read what a former round left in it.
    const QScopedValueRollback reading(m_reading, true);
    m_ui.le_horzPitch->clear();
    m_ui.lbl_horzPitch->show();
    m_ui.le_horzPitch->show();
    m_ui.lbl_vertPitch->hide();
    m_ui.le_vertPitch->hide();
    m_ui.fr_vertCalibration->hide();
    m_ui.fr_horzCalibration->show();
    m_ui.le_horzPitch->setFocus();
}

void Calibration::toLe_horzPitch()
{
    if (m_reading)
        return;
    const QScopedValueRollback reading(m_reading, true);
    goReadParam();
    sessionStore().horzPixel = parsed::toInt(m_ui.le_horzPitch->text());
    if (sessionStore().horzPixel >= smallestPixel)
        goToVerticalLine();
    else
        refuse(m_ui.le_horzPitch);
}

void Calibration::goToVerticalLine()
{
    m_ui.lbl_horzPitch->hide();
    m_ui.le_horzPitch->hide();
    m_ui.fr_horzCalibration->hide();
    m_ui.lbl_vertPitch->show();
    m_ui.le_vertPitch->show();
    m_ui.le_vertPitch->setFocus();
    m_ui.fr_vertCalibration->show();
}

void Calibration::toLe_vertPitch()
{
    if (m_reading)
        return;
    const QScopedValueRollback reading(m_reading, true);
    sessionStore().vertPixel = heightOfPixel(parsed::toInt(m_ui.le_vertPitch->text()));
    if (sessionStore().vertPixel < smallestPixel) {
        refuse(m_ui.le_vertPitch);
        return;
    }
    m_ui.le_vertPitch->clearFocus();
    const QString error = screenFile::write();
    if (error.isEmpty())
        close();
    else
        warnScreenFile(error);
}

void Calibration::refuse(QLineEdit *edit)
{
    disconnect(edit, nullptr, this, nullptr);
    hide();
    setStyleSheet(QStringLiteral("background-color:rgb(230, 230, 230)")); // the box can be read
    messages::warning(this, tr("Error"), tr("Please enter value in mm"));
    setStyleSheet(QStringLiteral("background-color:rgb(0, 0, 0)"));
    setPitchError(true);
}

void Calibration::keyPressEvent(QKeyEvent *event)
{
    qCDebug(lcCalibration, "close");
    if (event->key() == Qt::Key_Escape)
        close();
}

void Calibration::closeEvent(QCloseEvent *event)
{
    disconnect(m_ui.le_horzPitch, nullptr, this, nullptr);
    disconnect(m_ui.le_vertPitch, nullptr, this, nullptr);
    QDialog::closeEvent(event);
}

void Calibration::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    place();
}

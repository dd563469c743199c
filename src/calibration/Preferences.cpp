#include "Preferences.h"

#include "Calibration.h"
#include "fonts.h"
#include "screens.h"
#include "tables.h"

#include <QScreen>

Preferences::Preferences(QWidget *parent)
    : QDialog(parent)
    , m_calibration(new Calibration(this))
{
    m_ui.setupUi(this);
    raiseAllFonts();
    for (const QLatin1String frequency : tables::_frequency)
        m_ui.cob_screenFreq->addItem(frequency);

    connect(m_ui.pb_reCalibrate, &QPushButton::clicked, this, &Preferences::toPb_reCalibrate);
    connect(m_ui.pb_ok, &QPushButton::clicked, this, &Preferences::toPb_ok);
    connect(m_ui.pb_cancel, &QPushButton::clicked, this, &Preferences::toPb_cancel);
}

void Preferences::raiseAllFonts()
{
    raiseFonts({m_ui.lbl_screenResolution, m_ui.lbl_par, m_ui.lbl_pixels, m_ui.lbl_horzPixelSize,
                m_ui.lbl_unitHps, m_ui.lbl_vertPixelSize, m_ui.lbl_unitVps, m_ui.lbl_screenFreq},
               3);
    raiseFonts({m_ui.le_HorzScreenRes, m_ui.le_VertScreenRes, m_ui.le_horzPixelSize,
                m_ui.le_vertPixelSize, m_ui.cob_screenFreq},
               3);
}

void Preferences::goPreferences()
{
    show();
    const QRect geometry = screens::of(*this)->geometry();
    m_ui.le_HorzScreenRes->setText(QStringLiteral("%1").arg(geometry.width()));
    m_ui.le_VertScreenRes->setText(QStringLiteral("%1").arg(geometry.height()));
    m_ui.le_horzPixelSize->setText(QStringLiteral("%1").arg(m_calibration->isHorzPitch()));
    m_ui.le_vertPixelSize->setText(QStringLiteral("%1").arg(m_calibration->isVertPitch()));
    m_ui.cob_screenFreq->setCurrentIndex(m_calibration->isFrequency());
}

void Preferences::toPb_reCalibrate()
{
    m_calibration->goCalibration();
    close();
}

void Preferences::toPb_ok()
{
    m_calibration->setFrequency(m_ui.cob_screenFreq->currentIndex());
    close();
}

void Preferences::toPb_cancel()
{
    close();
}

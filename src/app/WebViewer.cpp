#include "WebViewer.h"

#include "LocalProfile.h"
#include "Messages.h"
#include "SessionStore.h"
#include "assessorRecord.h"
#include "reportText.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTextStream>
#include <QUrl>
#include <QWebEngineSettings>
#include <QWebEngineView>

Q_LOGGING_CATEGORY(lcViewer, "kelmoran.viewer", QtCriticalMsg)

namespace {

constexpr QRect viewPlace(0, 0, 1280, 1024); // larger than the window
constexpr double zoom = 0.99;

/// The placeholders of About. Without a record of the assessor its own stay in the text.
reportText::Values aboutValues()
{
    reportText::Values values{{QStringLiteral("v_version"), QStringLiteral("1.1")}};
    if (const auto record = assessorRecord::read()) {
        qCDebug(lcViewer, "line %s", qPrintable(record->join(u';')));
        values.append(
            {QStringLiteral("v_assessor"), assessorRecord::fullName(*record).toHtmlEscaped()});
        values.append(
            {QStringLiteral("v_institution"),
             assessorRecord::field(*record, assessorRecord::Institution).toHtmlEscaped()});
    }
    return values;
}

} // namespace

WebViewer::WebViewer(QWidget *parent)
    : QDialog(parent)
{
    m_ui.setupUi(this);
    setAttribute(Qt::WA_QuitOnClose, false); // it goes with the main window
}

WebViewer::~WebViewer()
{
    // The view goes before the profile that its page lives in.
    delete m_view;
}

void WebViewer::goAbout()
{
    showDocument(documents::About);
}

void WebViewer::goPublications()
{
    showDocument(documents::Publications);
}

void WebViewer::goVideo_instructions()
{
    showDocument(documents::VideoInstructions);
}

void WebViewer::showDocument(documents::Document document)
{
    show();
    raise();
    activateWindow();
    m_text.clear();
    const QString path = documents::find(document, sessionStore().language);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        messages::information(this, tr("Unable to open file"), file.errorString());
        return;
    }
    QTextStream stream(&file);
    stream.setEncoding(QStringConverter::Utf8);
    m_text = stream.readAll();
    if (document == documents::About)
        m_text = reportText::filled(m_text, aboutValues());
    if (m_layingOut)
        layOut(path);
}

void WebViewer::layOut(const QString &path)
{
    if (!m_view) {
        m_profile = new LocalProfile(this);
        m_view = new QWebEngineView(m_profile, this);
        m_view->setObjectName(QStringLiteral("webView"));
        m_view->setGeometry(viewPlace);
        m_view->setContextMenuPolicy(Qt::NoContextMenu);
        m_view->settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
        m_view->settings()->setAttribute(QWebEngineSettings::LocalStorageEnabled, false);
    }
    m_view->setZoomFactor(zoom);
    m_view->setHtml(m_text, QUrl::fromLocalFile(path)); // images lie beside the document
    m_view->show();
}

void WebViewer::hideEvent(QHideEvent *event)
{
    if (m_view)
        m_view->setHtml(QString()); // a film must not play on unseen
    QDialog::hideEvent(event);
}

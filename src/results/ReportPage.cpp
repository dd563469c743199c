#include "ReportPage.h"

#include "TimeSource.h"
#include "wholeFile.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QPageLayout>
#include <QPointer>
#include <QWebEngineNavigationRequest>
#include <QWebEngineSettings>

#include <utility>

namespace {
constexpr double margin = 12.0; // mm, within what every office printer can reach
constexpr double zoom = 0.99;

QPageLayout pdfLayout()
{
    return {QPageSize(QPageSize::A4), QPageLayout::Portrait,
            QMarginsF(margin, margin, margin, margin), QPageLayout::Millimeter};
}

QString write(const QString &path, const QByteArray &pdf)
{
    QDir().mkpath(QFileInfo(path).path());
    return wholeFile::replace(path, pdf);
}

void refuseLink(QWebEngineNavigationRequest &request)
{
    if (request.navigationType() == QWebEngineNavigationRequest::LinkClickedNavigation)
        request.reject();
}
} // namespace

ReportPage::ReportPage(QWebEngineProfile *profile, QObject *parent)
    : QWebEnginePage(profile, parent)
{
    settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
    settings()->setAttribute(QWebEngineSettings::PluginsEnabled, false);
    settings()->setAttribute(QWebEngineSettings::LocalStorageEnabled, false);
    setBackgroundColor(QColor(Qt::white));
    connect(this, &QWebEnginePage::loadFinished, this, &ReportPage::finishLoading);
    connect(this, &QWebEnginePage::renderProcessTerminated, this, &ReportPage::breakDown);
    connect(this, &QWebEnginePage::navigationRequested, this, &refuseLink);
}

ReportPage::~ReportPage()
{
    release();
}

void ReportPage::open(const QString &html, const QUrl &base)
{
    enter(Stage::Loading);
    setZoomFactor(zoom);
    setHtml(html, base);
}

void ReportPage::filePdf(const QString &path)
{
    m_path = path;
    if (m_stage == Stage::Ready)
        startPdf();
    else if (!isMoving())
        breakDown();
}

void ReportPage::finishLoading(bool ok)
{
    if (m_stage != Stage::Loading)
        return;
    if (!ok) {
        breakDown();
        return;
    }
    setZoomFactor(zoom); // a page of its own address starts at 1
    enter(Stage::Ready);
    if (m_path)
        startPdf();
}

void ReportPage::startPdf()
{
    enter(Stage::Printing);
    printToPdf(
        [page = QPointer<ReportPage>(this)](const QByteArray &pdf) {
            if (page)
                page->savePdf(pdf);
        },
        pdfLayout());
}

void ReportPage::savePdf(const QByteArray &pdf)
{
    if (m_stage != Stage::Printing)
        return;
    finishPdf(Stage::Ready, pdf.isEmpty() ? tr("The report could not be printed.")
                                          : write(m_path.value_or(QString()), pdf));
}

void ReportPage::breakDown()
{
    finishPdf(Stage::Broken, tr("The report could not be loaded."));
}

void ReportPage::finishPdf(Stage stage, const QString &error)
{
    const std::optional<QString> path = std::exchange(m_path, std::nullopt);
    enter(stage);
    if (path)
        Q_EMIT filed(*path, error);
}

void ReportPage::enter(Stage stage)
{
    m_stage = stage;
    if (isMoving())
        hold();
    else
        release();
    Q_EMIT settled();
}

void ReportPage::hold()
{
    if (m_held)
        return;
    m_held = &TimeSource::current();
    m_held->hold();
}

void ReportPage::release()
{
    // The virtual time of a test may be gone by now, and its successor was never held.
    if (m_held && m_held == &TimeSource::current())
        m_held->release();
    m_held = nullptr;
}

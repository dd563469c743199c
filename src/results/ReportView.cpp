#include "ReportView.h"

#include "LocalProfile.h"
#include "ReportPage.h"

#include <QPrinter>

#include <algorithm>

ReportView::ReportView(QWidget *window)
    : m_window(window)
{
}

ReportView::~ReportView()
{
    // The pages go before the profile that they live in.
    delete m_view;
    qDeleteAll(findChildren<ReportPage *>(QString(), Qt::FindDirectChildrenOnly));
    delete m_profile;
}

QWebEngineView &ReportView::view()
{
    if (!m_view)
        makeView();
    return *m_view;
}

void ReportView::makeView()
{
    m_profile = new LocalProfile(this);
    m_view = new QWebEngineView(m_profile, m_window);
    m_view->setObjectName(QStringLiteral("webView"));
    m_view->setGeometry(0, 35, 1024, 1160);
    m_view->setContextMenuPolicy(Qt::NoContextMenu);
    connect(m_view, &QWebEngineView::printFinished, this, &ReportView::finishPaper);
}

void ReportView::open(const QString &html, const QUrl &base)
{
    QWebEngineView &shown = view();
    ReportPage *former = m_page;
    m_page = new ReportPage(m_profile, this);
    connect(m_page, &ReportPage::filed, this, &ReportView::pdfFinished);
    connect(m_page, &ReportPage::settled, this, &ReportView::goOn);
    shown.setPage(m_page);
    shown.show();
    m_page->open(html, base);
    if (former)
        retire(former);
}

void ReportView::retire(ReportPage *page)
{
    const auto dismiss = [page] {
        if (!page->isBusy())
            page->deleteLater();
    };
    connect(page, &ReportPage::settled, page, dismiss);
    dismiss();
}

void ReportView::filePdf(const QString &path)
{
    if (m_onPaper && m_paperPage == m_page)
        m_path = path;
    else if (m_page)
        m_page->filePdf(path);
}

void ReportView::print(std::unique_ptr<QPrinter> printer)
{
    if (m_onPaper || !m_page)
        return;
    m_printer = std::move(printer);
    goOn();
}

void ReportView::goOn()
{
    if (m_printer && !m_onPaper)
        startPaper();
    Q_EMIT changed();
}

void ReportView::startPaper()
{
    if (m_page->isBusy())
        return;
    if (!m_page->isReady()) {
        m_printer.reset();
        return;
    }
    m_onPaper = true;
    m_paperPage = m_page;
    m_view->print(m_printer.get());
}

void ReportView::finishPaper(bool ok)
{
    const QString path = m_printer ? m_printer->outputFileName() : QString();
    m_onPaper = false;
    m_printer.reset();
    if (m_path && m_page)
        m_page->filePdf(*m_path);
    m_path.reset();
    Q_EMIT changed();
    if (!ok)
        Q_EMIT paperFailed(path);
}

bool ReportView::isBusy() const
{
    const QList<ReportPage *> pages = findChildren<ReportPage *>();
    return m_printer || std::any_of(pages.cbegin(), pages.cend(),
                                    [](const ReportPage *page) { return page->isBusy(); });
}

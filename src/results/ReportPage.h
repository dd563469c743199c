#pragma once

#include <QString>
#include <QWebEnginePage>

#include <optional>

class TimeSource;

/// One report as a page: laid out once, filed as a PDF once. Scripts are off, links lead nowhere,
/// and virtual time stands still while the page loads or prints.
class ReportPage : public QWebEnginePage
{
    Q_OBJECT

public:
    explicit ReportPage(QWebEngineProfile *profile, QObject *parent);
    ~ReportPage() override;

    /// Lays out the report. What lies beside it is found from `base`, the template's address.
    void open(const QString &html, const QUrl &base);
    /// Files the report on A4, as soon as it is laid out. The file is replaced in one step, and its
    /// folder is made if it is missing. Ends in filed(), also when it fails.
    void filePdf(const QString &path);

    /// The report stands, and its PDF is neither waited for nor on its way.
    bool isReady() const { return m_stage == Stage::Ready && !m_path; }
    /// The report is on its way to the screen or to its file.
    bool isBusy() const { return isMoving() || m_path; }

Q_SIGNALS:
    /// The error is empty if the PDF stands in the patient's folder.
    void filed(const QString &path, const QString &error);
    /// isReady() or isBusy() has changed.
    void settled();

private:
    enum class Stage { Blank, Loading, Ready, Printing, Broken };

    bool isMoving() const { return m_stage == Stage::Loading || m_stage == Stage::Printing; }
    void enter(Stage stage);
    void finishLoading(bool ok);
    void startPdf();
    void savePdf(const QByteArray &pdf);
    void breakDown();
    void finishPdf(Stage stage, const QString &error);
    void hold();
    void release();

    Stage m_stage = Stage::Blank;
    std::optional<QString> m_path; ///< of the PDF that is wanted and not yet filed
    TimeSource *m_held = nullptr;  ///< whose clock stands still for this page
};

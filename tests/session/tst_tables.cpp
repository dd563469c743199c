#include "tables.h"

#include <QStringList>
#include <QTest>

namespace {
template <std::size_t n>
QString joined(const std::array<QLatin1String, n> &table)
{
    QStringList list;
    for (const QLatin1String entry : table)
        list.append(entry);
    return list.join(u' ');
}
} // namespace

class tst_tables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTablesHoldTheirStringsInOrder_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("strings");

        QTest::newRow("_shapeDef")
            << joined(tables::_shapeDef) << u"IdR ShR CnR OrR SzR IdL ShL CnL OrL SzL"_qs;
        QTest::newRow("_shapeButton") << joined(tables::_shapeButton) << u"Id Sh Cn Or Sz"_qs;
        QTest::newRow("_triDef") << joined(tables::_triDef) << u"TL ML BL TR MR BR"_qs;
        QTest::newRow("_roseVents") << joined(tables::_roseVents) << u"E SE S SW W NW N NE"_qs;
        QTest::newRow("_dirMovement") << joined(tables::_dirMovement) << u"E S W N"_qs;
        QTest::newRow("_frequency") << joined(tables::_frequency) << u"60Hz 120Hz"_qs;
        QTest::newRow("_language") << joined(tables::_language) << u"_en _fr _de _it _es _nl"_qs;
        QTest::newRow("_pathLanguage")
            << joined(tables::_pathLanguage)
            << u"/Languages/En/ /Languages/Fr/ /Languages/De /Languages/It /Languages/Es /Languages/Nl"_qs;
    }
    void theTablesHoldTheirStringsInOrder()
    {
        QFETCH(const QString, table);
        QTEST(table, "strings");
    }

    void aGermanFileNameFollowsItsFolderWithoutASeparator()
    {
        QCOMPARE(QString(u".."_qs + tables::_pathLanguage[2] + u"kelmoran_de.qm"_qs),
                 u"../Languages/Dekelmoran_de.qm"_qs);
    }

    void theHeaderOfTheTrialFilesIsKept()
    {
        const QByteArray header(tables::_headerArchive);
        QCOMPARE(header,
                 QByteArray("code;gender;l_name;f_name;dob;task;session;date;time;subtask;"
                            "rank_task;rank_sub;t1_time;t1c_figure;t1c_answer;t1p_position;"
                            "t1p_answer;t1_tanswer;t1_answer;t1_implement;t2_rt;t2_position;t3_rt;"
                            "t3_position;t3_dir_mov;t4_dist_first;t4_dist_last;t4_pos_first;"
                            "t4_pos_last;error\n"));
        QCOMPARE(header.count(';'), 29);
    }
};

QTEST_GUILESS_MAIN(tst_tables)
#include "tst_tables.moc"

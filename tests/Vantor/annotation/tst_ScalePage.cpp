// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "Documents.h"
#include "tests/support/TestMain.h"

#include <limits>

using namespace Documents;

/// Annotations on a copy of their image in another size.
class tst_ScalePage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindMarksTheSameThings_data();
    void everyKindMarksTheSameThings();
    void sizesOfImageAndPixelFollow();
    void whatCannotBeScaledStaysAndIsTold();
    void thereAndBackIsTheSame();
    void factorsThatAreNoneChangeNothing();
};

void tst_ScalePage::everyKindMarksTheSameThings_data()
{
    QTest::addColumn<QString>("strKind");
    QTest::addColumn<QVector<double>>("before");
    QTest::addColumn<QVector<double>>("after");
    using N = QVector<double>;
    QTest::newRow("rectangle") << "rectangle" << N{1, 2, -3, 4} << N{4, 18, -12, 36};
    QTest::newRow("between corners") << "rectangle" << N{1, 2, 3, 4, 5, 6} << N{4, 18, 12, 36, 20, 54};
    QTest::newRow("ellipse") << "ellipse" << N{1, 2, 3, 4} << N{4, 18, 12, 36};
    QTest::newRow("circle") << "circle" << N{1, 2, 5} << N{4, 18, 30}; // 36 times the area
    QTest::newRow("polygon") << "polygon" << N{1, 2, 3, 4, 5, 6} << N{4, 18, 12, 36, 20, 54};
    QTest::newRow("ruler") << "ruler" << N{1, 2, 3, 4} << N{4, 18, 12, 36};
    QTest::newRow("line") << "line" << N{1, 2, 3, 4} << N{4, 18, 12, 36};
    QTest::newRow("arrow") << "arrow" << N{1, 2, 3, 4} << N{4, 18, 12, 36};
    QTest::newRow("point") << "point" << N{1, 2} << N{4, 18};
    QTest::newRow("text") << "text" << N{1, 2, 10} << N{4, 18, 90}; // the height of a line
}

void tst_ScalePage::everyKindMarksTheSameThings()
{
    QFETCH(QString, strKind);
    QFETCH(QVector<double>, before);
    QFETCH(QVector<double>, after);
    const Numbers numbers(before.begin(), before.end());
    SPage page = MakeDocument({Make(strKind.toStdString(), numbers)}).pages[0];
    QVERIFY(ScalePage(page, 4, 9).empty());
    QCOMPARE(page.objects[0].numbers, Numbers(after.begin(), after.end()));
}

void tst_ScalePage::sizesOfImageAndPixelFollow()
{
    SPage page = MakeDocument({}).pages[0];
    page.calibration = SCalibration{"mm", 0.5, 0.25, 10.0, 8.0};
    (void)ScalePage(page, 2.0, 0.5);
    QCOMPARE(page.width, 800);
    QCOMPARE(page.height, 150);
    QCOMPARE(page.calibration->x, 0.25);
    QCOMPARE(page.calibration->y, 0.5);
    QCOMPARE(page.calibration->originX, 20.0); // the same place in the picture
    QCOMPARE(page.calibration->originY, 4.0);
    // To a size that is asked for, exactly.
    for (int nWidth = 1; nWidth < 3000; ++nWidth) {
        page.width = 997;
        (void)ScalePage(page, nWidth / 997.0, 1.0);
        QCOMPARE(page.width, nWidth);
    }
}

void tst_ScalePage::whatCannotBeScaledStaysAndIsTold()
{
    SObject later;
    later.raw = "{\"kind\":\"later\"}";
    const std::vector<SObject> objects{Make("stamp", {1, 2, 3}, "host's"), later,
                                       Make("point", {1e9, 1}, "far"), Make("point", {1, 2}, "near")};
    SPage page = MakeDocument(objects).pages[0];
    const std::vector<SRemark> remarks = ScalePage(page, 2, 2);
    QCOMPARE(remarks.size(), std::size_t(3));
    QCOMPARE(remarks[0].object, std::string("host's"));
    QCOMPARE(remarks[2].object, std::string("far"));
    QVERIFY(remarks[0].text != remarks[2].text && !remarks[1].text.empty());
    for (std::size_t i = 0; i < 3; ++i)
        QCOMPARE(Differences(page.objects[i], objects[i]), std::vector<std::string>());
    QCOMPARE(page.objects[3].numbers, (Numbers{2, 4}));
}

void tst_ScalePage::thereAndBackIsTheSame()
{
    Chance chance(7);
    for (int i = 0; i < 500; ++i) {
        SPage page = MakeDocument({chance.Object(BuiltInKinds())}).pages[0];
        const SPage before = page;
        if (ScalePage(page, 4, 0.25).empty() && ScalePage(page, 0.25, 4).empty())
            QCOMPARE(Difference(page, before), QString());
    }
}

void tst_ScalePage::factorsThatAreNoneChangeNothing()
{
    const SPage before = MakeDocument({Make("point", {1, 2})}).pages[0];
    for (const double x : {0.0, -1.0, std::numeric_limits<double>::infinity(), std::nan("")}) {
        SPage page = before;
        (void)ScalePage(page, x, 2);
        (void)ScalePage(page, 2, x);
        QCOMPARE(Difference(page, before), QString());
    }
}

VANTOR_CORE_TEST_MAIN(tst_ScalePage)
#include "tst_ScalePage.moc"

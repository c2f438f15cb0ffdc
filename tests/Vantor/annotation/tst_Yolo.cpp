// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/annotation/ForeignTests.h"
#include "tests/support/TestMain.h"

using namespace ForeignTests;

namespace
{
std::string Written(const SDocument& document, Remarks& remarks, SContext& context)
{
    std::string bytes;
    return WriteYolo(document, context, bytes, remarks).IsSuccess() ? bytes : std::string("failed");
}

std::vector<SObject> ReadBack(const std::string& bytes, const SContext& context, Remarks& remarks)
{
    SDocument document;
    const auto result = ReadYolo(bytes, context, document, remarks);
    if (!result.IsSuccess())
        remarks.push_back({"failure", result.GetReason()});
    return document.pages.empty() ? std::vector<SObject>() : document.pages[0].objects;
}

/// The writer and the reader with the classes of one in the other.
SContext& Shared()
{
    static SContext context;
    return context;
}
Vantor::CResult WriteShared(const SDocument& document, SContext& context, std::string& bytes,
                            Remarks& remarks)
{
    const auto result = WriteYolo(document, context, bytes, remarks);
    Shared() = context;
    return result;
}
Vantor::CResult ReadShared(const std::string& bytes, const SContext&, SDocument& document, Remarks& remarks)
{
    return ReadYolo(bytes, Shared(), document, remarks);
}
} // namespace

class tst_Yolo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boxesAreFractions();
    void outlinesAndBoxesAreNotMixed();
    void classesKeepTheirNumbers_data();
    void classesKeepTheirNumbers();
    void whatLiesOutsideIsClipped_data();
    void whatLiesOutsideIsClipped();
    void whatCoversNothingOfTheImageIsLeftOut();
    void everyLossOfRandomDocumentsIsTold();
    void rowsOfOtherProgramsAreRead();
    void rowsThatAreNoneAreTold_data();
    void rowsThatAreNoneAreTold();
    void withoutASizeNothingIsDone();
    void damagedFilesGiveNothingThatIsNotWellFormed();
};

void tst_Yolo::boxesAreFractions()
{
    SContext context = Context();
    Remarks remarks;
    for (const std::vector<double>& numbers :
         {std::vector<double>{10.5, 20, 49.5, 50.25}, {60, 20, -49.5, 50.25}, {60, 70.25, -49.5, -50.25}}) {
        QCOMPARE(Written(DocumentOf({Make("rectangle", numbers)}), remarks, context),
                 std::string("0 0.0881250000 0.1504166667 0.1237500000 0.1675000000\n"));
    }
    QCOMPARE(context.classes, std::string("cell\n"));
}

void tst_Yolo::outlinesAndBoxesAreNotMixed()
{
    SContext context = Context();
    Remarks remarks;
    const std::string bytes =
        Written(DocumentOf({Make("rectangle", {0, 0, 100, 75}), Make("polygon", {0, 0, 200, 0, 0, 150})}),
                remarks, context);
    QCOMPARE(bytes,
             std::string("0 0.0000000000 0.0000000000 0.5000000000 0.0000000000 0.0000000000 0.5000000000\n"
                         "0 0.0000000000 0.0000000000 0.2500000000 0.0000000000 0.2500000000 "
                         "0.2500000000 0.0000000000 0.2500000000\n"));
    QVERIFY(remarks.size() == 1 && IsTold(remarks, "cell", {"becomes a polygon"}));
}

void tst_Yolo::classesKeepTheirNumbers_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QByteArray>("number");
    QTest::newRow("none") << QByteArray("") << QByteArray("cell\n") << QByteArray("0 ");
    QTest::newRow("another") << QByteArray("dog") << QByteArray("dog\ncell\n") << QByteArray("1 ");
    QTest::newRow("known") << QByteArray("dog\ncell\ncat\n") << QByteArray("dog\ncell\ncat\n")
                           << QByteArray("1 ");
    QTest::newRow("twice") << QByteArray("cell\ncell\n") << QByteArray("cell\ncell\n") << QByteArray("0 ");
    QTest::newRow("an empty line") << QByteArray("\ncat\n\n") << QByteArray("\ncat\ncell\n")
                                   << QByteArray("2 ");
    QTest::newRow("other ends of lines")
        << QByteArray("dog\r\ncell\r\n") << QByteArray("dog\ncell\n") << QByteArray("1 ");
}

void tst_Yolo::classesKeepTheirNumbers()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    QFETCH(QByteArray, number);
    SContext context = Context();
    context.classes = before.toStdString();
    Remarks remarks;
    const std::string bytes = Written(DocumentOf({Make("rectangle", {1, 2, 3, 4})}), remarks, context);
    QCOMPARE(QByteArray::fromStdString(context.classes), after);
    QCOMPARE(QByteArray::fromStdString(bytes).left(2), number);
}

void tst_Yolo::whatLiesOutsideIsClipped_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QVector<double>>("clipped");
    using Numbers = QVector<double>;
    QTest::newRow("box") << QByteArray("rectangle") << Numbers{-50, -25, 100, 100} << Numbers{0, 0, 50, 75};
    QTest::newRow("box around the image")
        << QByteArray("rectangle") << Numbers{-50, -25, 1000, 1000} << Numbers{0, 0, 400, 300};
    QTest::newRow("triangle") << QByteArray("polygon") << Numbers{-100, 0, 100, 0, 100, 200}
                              << Numbers{0, 100, 0, 0, 100, 0, 100, 200};
}

void tst_Yolo::whatLiesOutsideIsClipped()
{
    QFETCH(QByteArray, kind);
    QFETCH(QVector<double>, numbers);
    QFETCH(QVector<double>, clipped);
    SContext context = Context();
    Remarks remarks;
    const std::string bytes =
        Written(DocumentOf({Make(kind.constData(), {numbers.begin(), numbers.end()})}), remarks, context);
    QVERIFY(IsTold(remarks, "cell", {"clipped"}));
    const std::vector<double> read = ReadBack(bytes, context, remarks).at(0).numbers;
    QCOMPARE(int(read.size()), clipped.size());
    for (int i = 0; i < clipped.size(); ++i)
        QVERIFY(std::abs(read[static_cast<std::size_t>(i)] - clipped[i]) < 1e-6);
}

void tst_Yolo::whatCoversNothingOfTheImageIsLeftOut()
{
    for (const std::vector<double>& numbers : {std::vector<double>{-20, 5, 10, 10},
                                               {400, 5, 10, 10},
                                               {5, 301, 1, 1},
                                               {5, 5, 0, 10},
                                               {5, 5, 10, 0}}) {
        SContext context = Context();
        Remarks remarks;
        QCOMPARE(Written(DocumentOf({Make("rectangle", numbers)}), remarks, context), std::string());
        QVERIFY(IsTold(remarks, "cell", {"left out"}));
        QCOMPARE(context.classes, std::string());
    }
}

void tst_Yolo::everyLossOfRandomDocumentsIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(&WriteShared, &ReadShared, 1000), QString());
}

void tst_Yolo::rowsOfOtherProgramsAreRead()
{
    SContext context = Context();
    context.classes = "dog\ncat\n";
    Remarks remarks;
    const std::vector<SObject> objects = ReadBack("1 0.5 0.5 0.5 0.5\r\n\n0 0.25 0.5 0.5 1 0.99\n"
                                                  "7\t0 0  0.5 0 0.5 0.5 0 0.5\n",
                                                  context, remarks);
    QVERIFY(remarks.empty());
    QCOMPARE(objects.size(), std::size_t(3));
    QVERIFY(objects[2].name == "cat" && objects[2].numbers == (std::vector<double>{100, 75, 200, 150}));
    QVERIFY(objects[1].name == "dog" && objects[1].numbers == (std::vector<double>{0, 0, 200, 300}));
    QVERIFY(objects[0].name == "class_7" && objects[0].kind == "polygon");
    QCOMPARE(objects[0].numbers, (std::vector<double>{0, 0, 200, 0, 200, 150, 0, 150}));
    QVERIFY(ReadBack("", context, remarks).empty() && remarks.empty());
}

void tst_Yolo::rowsThatAreNoneAreTold_data()
{
    QTest::addColumn<QByteArray>("row");
    for (const char* pRow :
         {"x 0.5 0.5 0.5 0.5", "-1 0.5 0.5 0.5 0.5", "0 0.5 0.5 0.5", "0", "0 0.5 0.5 0.5 nan",
          "0 0.5 0.5 0.5 1e300", "0 0 0 1 1 1 0 1", "0.5 0.5 0.5 0.5 0.5", "0 1e9 0 1 1"})
        QTest::newRow(pRow) << QByteArray(pRow);
}

void tst_Yolo::rowsThatAreNoneAreTold()
{
    QFETCH(QByteArray, row);
    Remarks remarks;
    const auto objects = ReadBack("0 0.5 0.5 0.5 0.5\n" + row.toStdString(), Context(), remarks);
    QCOMPARE(objects.size(), std::size_t(1));
    QVERIFY(remarks.size() == 1 && remarks[0].text.find("left out") != std::string::npos);
}

void tst_Yolo::withoutASizeNothingIsDone()
{
    SContext context;
    SDocument document;
    std::string bytes;
    Remarks remarks;
    QVERIFY(!WriteYolo(document, context, bytes, remarks).IsSuccess());
    QVERIFY(!ReadYolo("0 0.5 0.5 0.5 0.5", context, document, remarks).IsSuccess());
}

void tst_Yolo::damagedFilesGiveNothingThatIsNotWellFormed()
{
    QVERIFY(ReadDamaged(&ReadYolo, "0 0.5 0.5 0.5 0.5\n1 0 0 0.5 0 0.5 0.5 0 0.5\n") > 0);
}

VANTOR_CORE_TEST_MAIN(tst_Yolo)
#include "tst_Yolo.moc"

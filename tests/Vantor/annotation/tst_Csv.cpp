// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/annotation/ForeignTests.h"
#include "tests/support/TestMain.h"

using namespace ForeignTests;

namespace
{
std::string Written(const SDocument& document, Remarks& remarks)
{
    SContext context = Context();
    std::string bytes;
    return WriteCsv(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

/// The rows without the head.
std::string Rows(std::vector<SObject> objects)
{
    Remarks remarks;
    const std::string bytes = Written(DocumentOf(std::move(objects)), remarks);
    return bytes.substr(bytes.find("\r\n") + 2);
}
} // namespace

class tst_Csv : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindHasItsGeometry_data();
    void everyKindHasItsGeometry();
    void textsAreQuoted_data();
    void textsAreQuoted();
    void pagesAndImagesAreNamed();
    void lossesAreTold();
};

void tst_Csv::everyKindHasItsGeometry_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QByteArray>("geometry");
    using Numbers = QVector<double>;
    const auto row = [](const char* pKind, Numbers numbers, const char* pGeometry) {
        QTest::newRow(pKind) << QByteArray(pKind) << numbers << QByteArray(pGeometry);
    };
    row("rectangle", {60, 70.25, -49.5, -50.25}, "10.5,20,49.5,50.25,2487.375,,60 70.25 -49.5 -50.25");
    row("ellipse", {0, 0, 4, 2}, "0,0,4,2,6.283185307179586,,0 0 4 2");
    row("circle", {5, 6, 2}, "3,4,4,4,12.566370614359172,,5 6 2");
    row("polygon", {0, 0, 4, 0, 0, 2}, "0,0,4,2,4,,0 0 4 0 0 2");
    row("ruler", {1, 2, 4, 6}, "1,2,3,4,,5,1 2 4 6");
    row("arrow", {4, 6, 1, 2}, "1,2,3,4,,5,4 6 1 2");
    row("point", {1.5, 2}, "1.5,2,0,0,,,1.5 2");
}

void tst_Csv::everyKindHasItsGeometry()
{
    QFETCH(QByteArray, kind);
    QFETCH(QVector<double>, numbers);
    QFETCH(QByteArray, geometry);
    QCOMPARE(QByteArray::fromStdString(Rows({Make(kind.constData(), {numbers.begin(), numbers.end()})})),
             "photo.jpg,1,cell," + kind + ',' + geometry + ",\r\n");
}

void tst_Csv::textsAreQuoted_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("plain") << QByteArray("a b") << QByteArray("a b");
    QTest::newRow("comma") << QByteArray("a,b") << QByteArray("\"a,b\"");
    QTest::newRow("semicolon") << QByteArray("a;b") << QByteArray("\"a;b\"");
    QTest::newRow("quote") << QByteArray("a\"b") << QByteArray("\"a\"\"b\"");
    QTest::newRow("line") << QByteArray("a\nb") << QByteArray("\"a\nb\"");
    QTest::newRow("formula") << QByteArray("=1+1") << QByteArray("\"'=1+1\"");
    QTest::newRow("plus") << QByteArray("+1") << QByteArray("\"'+1\"");
    QTest::newRow("minus") << QByteArray("-1") << QByteArray("\"'-1\"");
    QTest::newRow("at") << QByteArray("@a") << QByteArray("\"'@a\"");
    QTest::newRow("tab") << QByteArray("\t=a") << QByteArray("\"'\t=a\"");
    QTest::newRow("equals inside") << QByteArray("a=1") << QByteArray("a=1");
}

void tst_Csv::textsAreQuoted()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, field);
    SObject object = Make("text", {1, 2, 16}, text.constData());
    object.text = text.toStdString();
    QCOMPARE(QByteArray::fromStdString(Rows({object})),
             "photo.jpg,1," + field + ",text,1,2,0,0,,,1 2 16," + field + "\r\n");
    Remarks remarks;
    Written(DocumentOf({object}), remarks);
    QCOMPARE(remarks.size(), std::size_t(field.contains('\'') ? 2 : 0));
}

void tst_Csv::pagesAndImagesAreNamed()
{
    SDocument document = DocumentOf({Make("point", {1, 2}, "a"), Make("point", {1, 2}, "b")});
    document.pages.push_back(document.pages[0]);
    document.pages[1].page = 4;
    document.pages[1].image = "b,c.jpg";
    Remarks remarks;
    const QString text = QString::fromStdString(Written(document, remarks));
    const QStringList lines = text.split(QStringLiteral("\r\n"));
    QCOMPARE(lines[0], QStringLiteral("image,page,name,kind,left,top,width,height,area,length,numbers,text"));
    QVERIFY(lines[1].startsWith(QStringLiteral("photo.jpg,1,a,")));
    QVERIFY(lines[4].startsWith(QStringLiteral("\"b,c.jpg\",5,b,")));
    QVERIFY(remarks.empty());
}

void tst_Csv::lossesAreTold()
{
    for (unsigned nSeed = 1; nSeed < 200; ++nSeed) {
        const SDocument document = RandomDocument(nSeed);
        Remarks remarks;
        Written(document, remarks);
        for (const SObject& object : document.pages[0].objects) {
            SObject row = object; // what a row says
            const bool bIsThere = object.raw.empty() && object.kind != "host";
            row.showName = row.visible = true;
            row.locked = false;
            row.style = SStyle();
            row.extra = row.unknown = std::string();
            QCOMPARE(IsTold(remarks, object.name, {"left out"}), !bIsThere);
            QCOMPARE(bIsThere ? Untold(object, row, remarks) : std::string(), std::string());
        }
    }
}

VANTOR_CORE_TEST_MAIN(tst_Csv)
#include "tst_Csv.moc"

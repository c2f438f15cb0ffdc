// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/annotation/ForeignTests.h"
#include "tests/support/TestMain.h"

#include <QXmlStreamReader>

using namespace ForeignTests;

namespace
{
std::string Written(const SDocument& document, SContext context = Context())
{
    std::string bytes;
    Remarks remarks;
    return WriteSvg(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

SPage ReadBack(const std::string& bytes, Remarks& remarks)
{
    SDocument document;
    const bool bRead = ReadSvg(bytes, Context(), document, remarks).IsSuccess();
    return bRead && !document.pages.empty() ? document.pages[0] : SPage();
}

/// The attributes of the first element of that name.
QXmlStreamAttributes AttributesOf(const std::string& bytes, const char* pElement)
{
    QXmlStreamReader xml(QByteArray::fromStdString(bytes));
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement() && xml.name() == QLatin1String(pElement))
            return xml.attributes();
    }
    return {};
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    const std::size_t nAt = text.find(from);
    return nAt == std::string::npos ? std::string() : text.replace(nAt, from.size(), to);
}
} // namespace

class tst_Svg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindHasItsElement_data();
    void everyKindHasItsElement();
    void noSizeIsNegative();
    void everythingComesBack();
    void everyLossOfRandomDocumentsIsTold();
    void thePictureIsLinkedOrEmbedded();
    void theLowestIsPaintedFirst();
    void aShapeThatWasMovedCounts_data();
    void aShapeThatWasMovedCounts();
    void whatWasTransformedIsLeftOut();
    void drawingsOfOthersAreRefused();
    void withoutASizeNothingIsWritten();
    void hiddenAnnotationsAreHidden();
    void damagedFilesGiveNothingThatIsNotWellFormed();
    void whatTakesLongIsRefused_data();
    void whatTakesLongIsRefused();
};

void tst_Svg::everyKindHasItsElement_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<QByteArray>("places");
    using Numbers = QVector<double>;
    const auto row = [](const char* pKind, Numbers numbers, const char* pElement, const char* pPlaces) {
        QTest::newRow(pKind) << QByteArray(pKind) << numbers << QByteArray(pElement) << QByteArray(pPlaces);
    };
    row("rectangle", {10.5, 20, 49.5, 50.25}, "rect", "x=10.5 y=20 width=49.5 height=50.25");
    row("ellipse", {10, 20, 40, 20}, "ellipse", "cx=30 cy=30 rx=20 ry=10");
    row("circle", {10, 20, 7.5}, "circle", "cx=10 cy=20 r=7.5");
    row("point", {10, 20}, "circle", "cx=10 cy=20 r=2");
    row("polygon", {1, 2, 3, 4.5, 5, 6}, "polygon", "points=1 2 3 4.5 5 6 fill-rule=evenodd");
    row("line", {1, 2, 3, 4}, "line", "x1=1 y1=2 x2=3 y2=4");
    row("ruler", {1, 2, 3, 4}, "line", "x1=1 y1=2 x2=3 y2=4");
    row("arrow", {1, 2, 3, 4}, "line", "x1=1 y1=2 x2=3 y2=4");
}

void tst_Svg::everyKindHasItsElement()
{
    QFETCH(QByteArray, kind);
    QFETCH(QVector<double>, numbers);
    QFETCH(QByteArray, element);
    QFETCH(QByteArray, places);
    const std::string bytes = Written(DocumentOf({Make(kind.constData(), {numbers.begin(), numbers.end()})}));
    QByteArray found;
    for (const QXmlStreamAttribute& attribute : AttributesOf(bytes, element.constData())) {
        if (attribute.name() != QLatin1String("vector-effect"))
            found += ' ' + attribute.name().toLatin1() + '=' + attribute.value().toLatin1();
    }
    QCOMPARE(found.mid(1), places);
}

void tst_Svg::noSizeIsNegative()
{
    for (const std::vector<double>& numbers :
         {std::vector<double>{15, 27, -5, -7}, {10, 27, 5, -7}, {15, 20, -5, 7}}) {
        for (const char* pKind : {"rectangle", "ellipse"}) {
            const std::string bytes = Written(DocumentOf({Make(pKind, numbers)}));
            const std::string plain = Written(DocumentOf({Make(pKind, {10, 20, 5, 7})}));
            const char* pElement = pKind[0] == 'r' ? "rect" : "ellipse";
            QVERIFY(AttributesOf(bytes, pElement) == AttributesOf(plain, pElement));
        }
    }
}

void tst_Svg::everythingComesBack()
{
    SObject object = Make("text", {1.1, 2.2, 16}, "a\tb\nc\r<&>\"' \xF0\x9F\x94\xAC");
    object.id = "0b5c1d0e-8f6e-4b0e-9d43-0d2a44f8a111";
    object.text = "two\nlines";
    object.named = object.showName = object.visible = false;
    object.locked = true;
    object.style = {0x80FF0000U, 2.5, 0U};
    object.extra = "[1]";
    Remarks remarks;
    const SPage page = ReadBack(Written(DocumentOf({object})), remarks);
    QVERIFY(remarks.empty() && page.objects.size() == 1);
    QVERIFY(page.width == 400 && page.height == 300);
    const SObject& read = page.objects[0];
    QCOMPARE(Untold(object, read, remarks), std::string());
    QCOMPARE(read.id, object.id);
    QVERIFY(read.numbers == object.numbers);
}

void tst_Svg::everyLossOfRandomDocumentsIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(&WriteSvg, &ReadSvg, 1000), QString());
    SObject object = Make("text", {1, 2, 3}, "a\x01");
    object.text = "b\x02";
    SContext context = Context();
    std::string bytes;
    Remarks remarks;
    QVERIFY(WriteSvg(DocumentOf({object}), context, bytes, remarks).IsSuccess());
    QVERIFY(IsTold(remarks, object.name, {"of its name"}) && IsTold(remarks, object.name, {"of its text"}));
    QCOMPARE(ReadBack(bytes, remarks).objects.at(0).name, std::string("a"));
}

void tst_Svg::thePictureIsLinkedOrEmbedded()
{
    SDocument document = DocumentOf({});
    document.source.name = "a photo#1 \xC3\xA9.jpg";
    const auto reference = [&](const SContext& context, const char* pName) {
        return AttributesOf(Written(document, context), "image").value(QLatin1String(pName)).toString();
    };
    SContext context = Context();
    QCOMPARE(reference(context, "href"), QStringLiteral("a%20photo%231%20%C3%A9.jpg"));
    QCOMPARE(reference(context, "xlink:href"), QStringLiteral("a%20photo%231%20%C3%A9.jpg"));
    context.picture = "\x89PNG";
    context.pictureType = "image/png";
    QCOMPARE(reference(context, "xlink:href"), QStringLiteral("data:image/png;base64,iVBORw=="));
    QCOMPARE(reference(context, "width") + reference(context, "height"), QStringLiteral("400300"));
}

void tst_Svg::theLowestIsPaintedFirst()
{
    const std::string bytes =
        Written(DocumentOf({Make("point", {1, 2}, "upper"), Make("point", {3, 4}, "lower")}));
    QVERIFY(bytes.find("lower") < bytes.find("upper"));
    Remarks remarks;
    QCOMPARE(ReadBack(bytes, remarks).objects.at(0).name, std::string("upper"));
}

void tst_Svg::aShapeThatWasMovedCounts_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QVector<double>>("moved");
    using Numbers = QVector<double>;
    const auto row = [](const char* pKind, Numbers numbers, const char* pFrom, const char* pTo,
                        Numbers moved) {
        QTest::newRow(pKind) << QByteArray(pKind) << numbers << QByteArray(pFrom) << QByteArray(pTo) << moved;
    };
    row("rectangle", {15, 27, -5, -7}, " x=\"10\"", " x=\"11.5\"", {11.5, 20, 5, 7});
    row("ellipse", {10, 20, 40, 20}, " rx=\"20\"", " rx=\"30\"", {0, 20, 60, 20});
    row("circle", {10, 20, 8}, " r=\"8\"", " r=\"9\"", {10, 20, 9});
    row("point", {10, 20}, " cx=\"10\"", " cx=\"11\"", {11, 20});
    row("polygon", {1, 2, 3, 4, 5, 6}, "points=\"1 2", "points=\"1,2.5", {1, 2.5, 3, 4, 5, 6});
    row("ruler", {1, 2, 3, 4}, " x2=\"3\"", " x2=\"33\"", {1, 2, 33, 4});
}

void tst_Svg::aShapeThatWasMovedCounts()
{
    QFETCH(QByteArray, kind);
    QFETCH(QVector<double>, numbers);
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QVector<double>, moved);
    const std::string bytes = Written(DocumentOf({Make(kind.constData(), {numbers.begin(), numbers.end()})}));
    Remarks remarks;
    const SPage page = ReadBack(Replaced(bytes, from.toStdString(), to.toStdString()), remarks);
    QVERIFY(remarks.empty() && page.objects.size() == 1);
    QCOMPARE(QVector<double>(page.objects[0].numbers.begin(), page.objects[0].numbers.end()), moved);
}

void tst_Svg::whatWasTransformedIsLeftOut()
{
    const std::string bytes =
        Written(DocumentOf({Make("rectangle", {1, 2, 3, 4}), Make("point", {1, 2}, "other")}));
    for (const char* pElement : {"<rect ", "<g data-kind=\"rectangle\" "}) {
        Remarks remarks;
        const std::string moved =
            Replaced(bytes, pElement, pElement + std::string("transform=\"scale(2)\" "));
        const SPage page = ReadBack(moved, remarks);
        QVERIFY(page.objects.size() == 1 && page.objects[0].name == "other");
        QVERIFY(IsTold(remarks, "cell", {"left out"}));
    }
    SDocument document;
    Remarks remarks;
    const std::string moved =
        Replaced(bytes, "id=\"annotations\"", "id=\"annotations\" transform=\"scale(2)\"");
    QVERIFY(!ReadSvg(moved, Context(), document, remarks).IsSuccess());
}

void tst_Svg::drawingsOfOthersAreRefused()
{
    SDocument document;
    Remarks remarks;
    for (const char* pText : {"", "x", "<svg width=\"1\"/>", "<html/>", "<svg data-vantor=\"1\">"})
        QVERIFY2(!ReadSvg(pText, Context(), document, remarks).IsSuccess(), pText);
    QVERIFY(ReadSvg("<svg data-vantor=\"1\"/>", Context(), document, remarks).IsSuccess());
}

void tst_Svg::withoutASizeNothingIsWritten()
{
    SDocument document = DocumentOf({});
    document.pages[0].width = 0;
    QVERIFY(Written(document, SContext()).empty());
    QVERIFY(!Written(document).empty());
}

void tst_Svg::hiddenAnnotationsAreHidden()
{
    SObject object = Make("point", {1, 2});
    QVERIFY(Written(DocumentOf({object})).find("visibility=\"hidden\"") == std::string::npos);
    object.visible = false;
    QVERIFY(Written(DocumentOf({object})).find("visibility=\"hidden\"") != std::string::npos);
}

void tst_Svg::damagedFilesGiveNothingThatIsNotWellFormed()
{
    SObject text = Make("text", {1, 2, 16});
    text.text = "a";
    const std::string bytes = Written(DocumentOf({Make("rectangle", {1, 2, 3, 4}), text}));
    QVERIFY(ReadDamaged(&ReadSvg, bytes) > 0);
}

void tst_Svg::whatTakesLongIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray begin = "<svg data-vantor=\"1\"><g id=\"annotations\"><x";
    QByteArray attributes = begin;
    for (int i = 0; i < 200000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    QTest::newRow("attributes") << attributes + "/></g></svg>";
    QByteArray comment = attributes;
    QTest::newRow("attributes behind a comment")
        << comment.replace("<x", "<!-- \" > ' <a --><x") + "/></g></svg>";
    QByteArray section = attributes;
    QTest::newRow("attributes behind a section")
        << section.replace("<x", "<![CDATA[ \" > <a ']]><x") + "/></g></svg>";
    QTest::newRow("depth") << begin + ">" + QByteArray("<y>").repeated(3000000);
    QTest::newRow("entities") << QByteArray("<!DOCTYPE svg [<!ENTITY a \"aaaa\">]>") + begin + "/></g></svg>";
}

void tst_Svg::whatTakesLongIsRefused()
{
    QFETCH(QByteArray, text);
    SDocument document;
    Remarks remarks;
    const std::clock_t start = std::clock();
    QVERIFY(!ReadSvg(text.toStdString(), Context(), document, remarks).IsSuccess());
    QVERIFY(double(std::clock() - start) / CLOCKS_PER_SEC < 2.0);
}

VANTOR_CORE_TEST_MAIN(tst_Svg)
#include "tst_Svg.moc"

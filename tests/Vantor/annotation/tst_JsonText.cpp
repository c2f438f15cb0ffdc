// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/annotation/JsonText_p.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <random>

using namespace Vantor::Annotations;
using namespace std::string_literals;

/// JSON as text, held against Qt's own reader.
class tst_JsonText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatQtTakesIsTakenAndTheRestRefused();
    void stringsAreThoseThatQtReads();
    void numbersKeepTheirBitsAndRawTextItsLetters();
    void aTextThatIsCutShortIsWalkedToItsEnd();
};

void tst_JsonText::whatQtTakesIsTakenAndTheRestRefused()
{
    // The names are so long that three changes never make them equal: Qt leaks the value of a name that is
    // there twice.
    const std::string whole =
        "{\"first\":[1,-2.5e+3,true,false,null,\"\\u00e4\\n\"],\"the second one\":{\"c\":{}},"
        "\"\xc3\xa4\xc3\xa4\xc3\xa4 the third\":\"\xf0\x9f\x98\x80\"}";
    const std::string letters = "{}[]\",:\\0129.eE+- tfn\xc3\xff\x1f" + std::string(1, '\0');
    std::mt19937 engine(5);
    int nGood = 0;
    for (int i = 0; i < 100000; ++i) {
        std::string text = whole;
        for (int nChanges = static_cast<int>(engine() % 3); nChanges >= 0; --nChanges) {
            const std::size_t nAt = engine() % text.size();
            if (engine() % 2)
                text[nAt] = letters[engine() % letters.size()];
            else
                text.erase(nAt, 1 + engine() % 3);
        }
        QJsonParseError error;
        QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
        const bool bGood = CheckJson(TrimJson(text), 16).IsSuccess() && JsonView(TrimJson(text)).IsObject();
        nGood += bGood;
        // Qt takes more than the grammar: numbers such as 01 and 1., control characters in strings.
        if (bGood)
            QVERIFY2(error.error == QJsonParseError::NoError, text.c_str());
    }
    QVERIFY(nGood > 1000);
    for (const char* pBad : {"",
                             "01",
                             "1.",
                             ".5",
                             "-",
                             "+1",
                             "1e",
                             "nul",
                             "[1,]",
                             "{,}",
                             "{\"a\"}",
                             "{\"a\":1,}",
                             "\"\t\"",
                             "\"\\x\"",
                             "\"\\u12g4\"",
                             "[1 2]",
                             "[1]]",
                             "NaN",
                             "'a'",
                             "\"\xc0\x80\"",
                             "\"\xed\xa0\x80\"",
                             "\"\xf4\x90\x80\x80\"",
                             "\"\xe2\x82\"",
                             "// x\n1"})
        QVERIFY2(!CheckJson(pBad, 16).IsSuccess(), pBad);
    QVERIFY(!CheckJson("\"a\0b\""s, 16).IsSuccess());
    QVERIFY(CheckJson("[[]]", 2).IsSuccess());
    QVERIFY(!CheckJson("[[]]", 1).IsSuccess());
}

void tst_JsonText::stringsAreThoseThatQtReads()
{
    std::mt19937 engine(6);
    const std::vector<std::string> pieces{"a",
                                          "\\\\",
                                          "\\\"",
                                          "\\/",
                                          "\\b",
                                          "\\f",
                                          "\\n",
                                          "\\r",
                                          "\\t",
                                          "\\u0041",
                                          "\\u00e4",
                                          "\\u20AC",
                                          "\xc3\xa4",
                                          "\\ud83d\\ude00",
                                          "\xe2\x82\xac",
                                          "\\\\\\\\"};
    for (int i = 0; i < 20000; ++i) {
        std::string quoted = "\"";
        for (int nPieces = static_cast<int>(engine() % 8); nPieces > 0; --nPieces)
            quoted += pieces[engine() % pieces.size()];
        quoted += '"';
        const std::string object = "{\"k\" : " + quoted + " , \"l\":1}";
        const QString strExpected = QJsonDocument::fromJson(QByteArray::fromStdString(object))
                                        .object()[QStringLiteral("k")]
                                        .toString();
        QVERIFY(CheckJson(object, 1).IsSuccess());
        QCOMPARE(QString::fromStdString(JsonView(object)["k"].String().value_or("none")), strExpected);
        QCOMPARE(JsonView(object)["l"].Number().value_or(0.0), 1.0);
        std::string written;
        JsonWriter(written).String(strExpected.toStdString());
        QCOMPARE(QString::fromStdString(JsonView(written).String().value_or("none")), strExpected);
    }
    for (const char* pHalf : {"\"\\ud83d\"", "\"\\ude00\"", "\"\\ud83dx\"", "\"\\ud83d\\u0041\""})
        QVERIFY(!JsonView(pHalf).String());
    std::string written;
    JsonWriter(written).String("\xff");
    QCOMPARE(written, "\"\xef\xbf\xbd\""s);
}

void tst_JsonText::numbersKeepTheirBitsAndRawTextItsLetters()
{
    QVERIFY(std::signbit(JsonView("-0").Number().value_or(1.0)));
    QVERIFY(std::signbit(JsonView("-0.0").Number().value_or(1.0)));
    QCOMPARE(JsonView("18446744073709551615").Whole().value_or(0), ~std::uint64_t{0});
    for (const char* pNone : {"1e400", "-1e400", "\"1\"", "true", "inf", "nan", "infinity"})
        QVERIFY2(!JsonView(pNone).Number(), pNone);
    for (const char* pNone : {"-1", "1.0", "1e2", "18446744073709551616", "null"})
        QVERIFY2(!JsonView(pNone).Whole(), pNone);
    JsonItems items(JsonView("{ \"a\" : [1, 2 ] , \"b\":{ } }"));
    QVERIFY(items.Next());
    QCOMPARE(std::string(items.Raw()), "\"a\" : [1, 2 ]"s);
    QVERIFY(items.Next());
    QCOMPARE(items.Name(), "b"s);
    QCOMPARE(std::string(items.Value().Raw()), "{ }"s);
    QVERIFY(!items.Next());
}

void tst_JsonText::aTextThatIsCutShortIsWalkedToItsEnd()
{
    const std::string text = "{\"format\":\"x\",\"list\":[{\"a\\\"\":[1,2]},3],\"end\":\"\\\\\"}";
    for (std::size_t n = 0; n <= text.size(); ++n) {
        const std::string cut = text.substr(0, n);
        int nMembers = 0;
        for (JsonItems items{JsonView(cut)}; items.Next(); ++nMembers) {
            for (JsonItems inner(items.Value()); inner.Next();)
                QVERIFY(inner.Raw().size() <= n);
        }
        QVERIFY(nMembers <= 3);
        QVERIFY(n < 13 || JsonView(cut)["format"].String() == "x");
    }
}

VANTOR_CORE_TEST_MAIN(tst_JsonText)
#include "tst_JsonText.moc"

// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "LibraryTexts.h"
#include "tests/support/TestMain.h"

#include <QTranslator>

class tst_LibraryTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(m_translator.load(QStringLiteral(":/app/translations/vantor-viewer_ko.qm")));
        QVERIFY(QCoreApplication::installTranslator(&m_translator));
    }
    void cleanup() { QCoreApplication::removeTranslator(&m_translator); }

    void withoutATranslationEverythingStaysAsItIs()
    {
        cleanup();
        for (const char* pText :
             {"Cannot load image /a b. There is no such file.", "It is the first of 3 pages.", ""}) {
            QCOMPARE(LibraryTexts::Failure(QLatin1String(pText)), QLatin1String(pText));
            QCOMPARE(LibraryTexts::Sentence(QLatin1String(pText)), QLatin1String(pText));
        }
    }

    void whatFailedAndWhyAreTranslatedAroundTheName_data()
    {
        QTest::addColumn<QString>("strEnglish");
        QTest::addColumn<QString>("strKorean");
        const auto row = [](const char* pName, const QString& strEnglish, const QString& strKorean) {
            QTest::newRow(pName) << strEnglish << strKorean;
        };
        row("plain", QStringLiteral("Cannot load image /a.png. There is no such file."),
            QStringLiteral("이미지 /a.png을(를) 불러올 수 없습니다. 그런 파일이 없습니다."));
        row("full stops in the name",
            QStringLiteral("Cannot load image /a. b. There is. c.png. The file is empty."),
            QStringLiteral("이미지 /a. b. There is. c.png을(를) 불러올 수 없습니다. 파일이 비어 있습니다."));
        row("percent in the name", QStringLiteral("Cannot load image /%1 %2.png. The file is empty."),
            QStringLiteral("이미지 /%1 %2.png을(를) 불러올 수 없습니다. 파일이 비어 있습니다."));
        row("a line in the name", QStringLiteral("Cannot load image /a\nb.png. The file is empty."),
            QStringLiteral("이미지 /a\nb.png을(를) 불러올 수 없습니다. 파일이 비어 있습니다."));
        row("numbers", QStringLiteral("Cannot load all of pdf file /a.pdf. Page 3 of 7 cannot be rendered."),
            QStringLiteral(
                "PDF 파일 /a.pdf을(를) 끝까지 불러올 수 없습니다. 7쪽 중 3쪽을 그릴 수 없습니다."));
        row("two sentences",
            QStringLiteral(
                "Cannot load all of pdf file /a. b.pdf. Page 3 of 7 cannot be rendered. It took longer "
                "than the time limit."),
            QStringLiteral(
                "PDF 파일 /a. b.pdf을(를) 끝까지 불러올 수 없습니다. 7쪽 중 3쪽을 그릴 수 없습니다. "
                "시간 제한을 넘었습니다."));
        row("no name", QStringLiteral("Cannot rotate the image. The rotated image would be too large."),
            QStringLiteral("이미지를 회전할 수 없습니다. 회전한 이미지가 너무 커집니다."));
        row("unknown reason", QStringLiteral("Cannot load image /a.png. It rains."),
            QStringLiteral("이미지 /a.png을(를) 불러올 수 없습니다. It rains."));
        row("unknown failure", QStringLiteral("It rains. The file is empty."),
            QStringLiteral("It rains. The file is empty."));
    }
    void whatFailedAndWhyAreTranslatedAroundTheName()
    {
        QFETCH(QString, strEnglish);
        QTEST(LibraryTexts::Failure(strEnglish), "strKorean");
    }

    void notesAreTranslatedAsFarAsTheyAreKnown()
    {
        QCOMPARE(LibraryTexts::Sentence(QStringLiteral("It is the first of 3 pages.")),
                 QStringLiteral("3쪽 중 첫 번째 쪽입니다."));
        QCOMPARE(LibraryTexts::Sentence(QStringLiteral("The file is incomplete: something else.")),
                 QStringLiteral("파일이 불완전합니다: something else."));
        QCOMPARE(LibraryTexts::Sentence(QStringLiteral("It rains.")), QStringLiteral("It rains."));
    }

private:
    QTranslator m_translator;
};

VANTOR_TEST_MAIN(tst_LibraryTexts)
#include "tst_LibraryTexts.moc"

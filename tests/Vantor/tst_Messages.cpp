// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <Vantor/Messages.h>

#include <QTemporaryDir>
#include <QTemporaryFile>

using namespace ImageFiles;

namespace
{
QStringList g_messages;

void Collect(const char* text)
{
    g_messages << QString::fromUtf8(text);
}

/// What a call writes on standard error.
template <class TCall> QByteArray StandardErrorOf(TCall call)
{
    QTemporaryFile file;
    if (!file.open())
        return "no file";
    const int nBefore = ::dup(STDERR_FILENO);
    ::dup2(file.handle(), STDERR_FILENO);
    call();
    ::dup2(nBefore, STDERR_FILENO);
    ::close(nBefore);
    file.seek(0);
    return file.readAll();
}

/// A TIFF file of one grey pixel with a tag that nobody knows.
QByteArray TiffWithAnUnknownTag()
{
    const auto entry = [](int nTag, int nValue) {
        const char bytes[] = {static_cast<char>(nTag),
                              static_cast<char>(nTag >> 8),
                              3,
                              0,
                              1,
                              0,
                              0,
                              0,
                              static_cast<char>(nValue),
                              0,
                              0,
                              0};
        return QByteArray(bytes, sizeof(bytes));
    };
    QByteArray entries;
    for (const auto& [nTag, nValue] :
         {std::pair(256, 1), std::pair(257, 1), std::pair(258, 8), std::pair(259, 1), std::pair(262, 1),
          std::pair(273, 8), std::pair(278, 1), std::pair(279, 1), std::pair(60001, 1)})
        entries += entry(nTag, nValue);
    return QByteArray("II*\0\x0a\0\0\0\x7f\0\x09\0", 12) + entries + QByteArray(4, '\0');
}
} // namespace

class tst_Messages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        g_messages.clear();
        Vantor::SetMessageSink(Collect);
    }
    void cleanup() { Vantor::SetMessageSink(nullptr); }

    void everyCodecsFirstMessageIsTold_data();
    void everyCodecsFirstMessageIsTold();
    void withoutASinkMessagesAreDropped();
    void aGoodFileSaysNothing();
};

void tst_Messages::everyCodecsFirstMessageIsTold_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("source");
    QTest::addColumn<bool>("loads");
    const auto contentOf = [](const char* pName) {
        QFile file(TestDataPath(QString::fromLatin1(pName)));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QTest::newRow("a JPEG that is cut short")
        << contentOf("broken/peacock.default.truncated.jpeg") << QStringLiteral("libjpeg: ") << true;
    QTest::newRow("a JPEG without a picture")
        << QByteArray("\xff\xd8\xff\xd9", 4) << QStringLiteral("libjpeg: ") << false;
    QTest::newRow("a PNG that is damaged")
        << contentOf("broken/spng_badcrc.png") << QStringLiteral("libpng: ") << false;
    QTest::newRow("a TIFF with a tag that nobody knows")
        << TiffWithAnUnknownTag() << QStringLiteral("libtiff: ") << true;
}

void tst_Messages::everyCodecsFirstMessageIsTold()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, source);
    QFETCH(bool, loads);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a"));
    WriteFile(path, content);
    CImage image;
    for (int i = 1; i <= 2; ++i) { // of each file anew
        int nResult = 1;
        QCOMPARE(StandardErrorOf([&] { nResult = LoadFile(image, path); }), QByteArray());
        QCOMPARE(nResult == 0, loads);
        QCOMPARE(g_messages.size(), i);
        QVERIFY2(g_messages.last().startsWith(source), qPrintable(g_messages.last()));
        QVERIFY(!g_messages.last().contains(QLatin1Char('\n')));
    }
}

void tst_Messages::withoutASinkMessagesAreDropped()
{
    Vantor::SetMessageSink(nullptr);
    CImage image;
    QCOMPARE(StandardErrorOf([&] { LoadData(image, "broken/peacock.default.truncated.jpeg"); }),
             QByteArray());
    QVERIFY(g_messages.isEmpty());
    QCOMPARE(image.GetWidth(), 100);
}

void tst_Messages::aGoodFileSaysNothing()
{
    CImage image;
    for (const char* pName : {"jpeg/hopper_orientation_6.jpg", "png/PngSuite.png", "tiff/bricks-color.tiff"})
        QCOMPARE(LoadData(image, pName), 0);
    QCOMPARE(g_messages, QStringList());
}

VANTOR_CORE_TEST_MAIN(tst_Messages)
#include "tst_Messages.moc"

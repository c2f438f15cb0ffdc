// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ImageFiles.h"
#include "tests/support/TestMain.h"

#include <QTemporaryDir>

#include <cmath>

using namespace ImageFiles;

namespace
{
constexpr int kWidth = 13; // of the test data
constexpr int kHeight = 7;

/// The samples of the test data, whose formulas these are.
std::vector<int> ColoursAt(int x, int y, int nMaximum)
{
    return {x * nMaximum / (kWidth - 1), y * nMaximum / (kHeight - 1),
            (x + y) * nMaximum / (kWidth + kHeight - 2)};
}

int ScaledTo255(int nSample, int nMaximum)
{
    return static_cast<int>(std::floor(nSample * 255.0 / nMaximum + 0.5));
}
} // namespace

/// PBM, PGM and PPM files of all six kinds.
class tst_PnmFiles : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    int LoadBytes(CImage& image, const QByteArray& content) const
    {
        const QString strPath = m_folder.filePath(QStringLiteral("made.pnm"));
        WriteFile(strPath, content);
        return LoadFile(image, strPath);
    }

    QByteArray SavedAs(const CImage& image, const char* pName) const
    {
        const QString strPath = m_folder.filePath(QString::fromLatin1(pName));
        if (image.Save(strPath.toStdWString()) != 0)
            return {};
        QFile file(strPath);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private Q_SLOTS:
    void samplesAreScaledFromTheirMaximum_data()
    {
        QTest::addColumn<int>("nChannels");
        QTest::addColumn<int>("nMaximum");
        QTest::newRow("ppm/bytes.ppm") << 3 << 255;
        QTest::newRow("ppm/words.ppm") << 3 << 65535;
        QTest::newRow("ppm/plain.ppm") << 3 << 15;
        QTest::newRow("pgm/bytes.pgm") << 1 << 255;
        QTest::newRow("pgm/words.pgm") << 1 << 1023;
        QTest::newRow("pgm/plain.pgm") << 1 << 100;
    }
    void samplesAreScaledFromTheirMaximum()
    {
        QFETCH(int, nChannels);
        QFETCH(int, nMaximum);
        CImage image;
        QCOMPARE(LoadData(image, QTest::currentDataTag()), 0);
        QCOMPARE(image.GetWidth(), kWidth);
        QCOMPARE(image.GetHeight(), kHeight);
        QCOMPARE(image.GetChannel(), nChannels);
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) {
                std::vector<int> expected = ColoursAt(x, y, nMaximum);
                for (int& n : expected)
                    n = ScaledTo255(n, nMaximum);
                if (nChannels == 1)
                    expected = {expected[2]};
                QCOMPARE(PixelOf(image, x, y), expected);
            }
        }
    }

    void aBitThatIsSetIsBlack()
    {
        for (const char* pName : {"pbm/bits.pbm", "pbm/plain.pbm"}) {
            CImage image;
            QCOMPARE(LoadData(image, pName), 0);
            QCOMPARE(image.GetChannel(), 1);
            for (int y = 0; y < kHeight; ++y)
                for (int x = 0; x < kWidth; ++x)
                    QCOMPARE(PixelOf(image, x, y), std::vector<int>({(x * x + 3 * y) % 5 < 2 ? 0 : 255}));
        }
    }

    void samplesAboveTheMaximumAreWhite()
    {
        CImage image;
        QCOMPARE(LoadBytes(image, QByteArray("P2 2 1 100 100 101")), 0);
        QCOMPARE(PixelOf(image, 1, 0), std::vector<int>({255}));
        QCOMPARE(LoadBytes(image, QByteArray("P5 2 1 100\n\x32\xff", 13)), 0);
        QCOMPARE(PixelOf(image, 0, 0), std::vector<int>({128}));
        QCOMPARE(PixelOf(image, 1, 0), std::vector<int>({255}));
    }

    void commentsMayStandAnywhereBeforeTheSamples()
    {
        CImage image;
        QCOMPARE(LoadBytes(image, "P5#one\n2#two\n#three\r1 # four\n255\nab"), 0);
        QCOMPARE(image.GetWidth(), 2);
        QCOMPARE(PixelOf(image, 1, 0), std::vector<int>({'b'}));
    }

    void headsLongerThanOneReadAreRead()
    {
        CImage image;
        QCOMPARE(LoadBytes(image, "P5\n#" + QByteArray(10000, 'x') + "\n2 1 255\nab"), 0);
        QCOMPARE(PixelOf(image, 0, 0), std::vector<int>({'a'}));
    }

    void wrongHeadsAreRefused()
    {
        for (const char* pHead :
             {"P5", "P5 2", "P5 0 1 255\nab", "P5 2 -1 255\nab", "P5 2 1 0\nab", "P5 2 1 65536\nabcd",
              "P5 2 1 255", "P5 2x1 255\nab", "P5 99999999999999999999 1 255\nab", "P2 2 1 255 7 x"}) {
            CImage image;
            QVERIFY2(LoadBytes(image, pHead) != 0, pHead);
            QVERIFY2(!image.GetFailureReason().empty(), pHead);
        }
    }

    void claimsBeyondTheLengthAreRefusedBeforeMemoryIsTaken()
    {
        for (const char* pHead : {"P6 15000 15000 255\n", "P5 15000 15000 65535\n", "P4 900000 900\n",
                                  "P3 15000 10000 255\n", "P2 15000 15000 255\n", "P1 15000 15000\n"}) {
            CImage image;
            QVERIFY(LoadBytes(image, pHead + QByteArray(100, '1')) != 0);
            QVERIFY2(image.GetFailureReason().find("too short for the size that it claims") !=
                         std::string::npos,
                     image.GetFailureReason().c_str());
        }
    }

    void aSampleThatIsMissingRefusesTheFile()
    {
        CImage image;
        QVERIFY(LoadBytes(image, "P2 3 1 255 1 2     ") != 0);
        QVERIFY(LoadBytes(image, "P1 4 1 012 ") != 0);
        QVERIFY(LoadBytes(image, "P5 3 1 255\nab") != 0);
    }

    void savedFilesHaveTheBytesOfThePixels()
    {
        CImage image;
        QCOMPARE(image.Create(2, 2, 4, 8, Vantor::Algorithms::EImageType::Interleaved, 16), 0);
        for (int i = 0; i < 16; ++i)
            image.GetPixel(i / 4 % 2, i / 8)[i % 4] = static_cast<unsigned char>('a' + i);
        QCOMPARE(SavedAs(image, "a.ppm"), QByteArray("P6\n2 2\n255\nabcefgijkmno")); // alpha is dropped
        CImage grey;
        QCOMPARE(grey.Create(3, 1, 1, 8, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
        std::copy_n("xyz", 3, grey.GetPixel(0, 0));
        QCOMPARE(SavedAs(grey, "a.pgm"), QByteArray("P5\n3 1\n255\nxyz"));
        QCOMPARE(SavedAs(grey, "a.ppm"), QByteArray("P6\n3 1\n255\nxxxyyyzzz"));
    }

    void coloursAreNotSavedAsGrey()
    {
        CImage image;
        QCOMPARE(image.Create(2, 2, 3, 8, Vantor::Algorithms::EImageType::Interleaved, 4), 0);
        QVERIFY(image.Save(m_folder.filePath(QStringLiteral("no.pgm")).toStdWString()) != 0);
        QCOMPARE(image.GetFailureReason(),
                 std::string("A PGM file holds shades of grey only, and the image has colours."));
        QVERIFY(!QFile::exists(m_folder.filePath(QStringLiteral("no.pgm"))));
    }
};

VANTOR_CORE_TEST_MAIN(tst_PnmFiles)
#include "tst_PnmFiles.moc"

// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// LoadAll on files of any format, and on the pages of TIFF files.
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/Vantor/image/TiffWriter.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/image/LoadAll.h>
#include <Vantor/image/SImageMetadata.h>

#include <QTemporaryDir>
#include <QtEndian>
#include <ctime>

using namespace ImageFiles;
using namespace TiffWriter;
using Vantor::Algorithms::kMostImagesOfFile;
using Vantor::Algorithms::LoadAll;

namespace
{
using Images = std::vector<std::shared_ptr<CImage>>;
const std::vector<int> kWhite = {255};

Images All(const QString& path, std::string* pFailure = nullptr, int nLimit = kMostImagesOfFile)
{
    std::string strFailure;
    return LoadAll(path.toStdWString(), nLimit, pFailure ? *pFailure : strFailure);
}

/// A folder for the files of a test.
class CFolder
{
public:
    QString Path(const char* pName) const { return m_folder.filePath(QString::fromLatin1(pName)); }

private:
    QTemporaryDir m_folder;
};

/// Kinds of pages that become images of all sorts.
std::vector<STiff> Kinds()
{
    std::vector<STiff> kinds(8);
    kinds[1].nSamples = 3;
    kinds[1].nPhotometric = PHOTOMETRIC_RGB;
    kinds[2] = kinds[1];
    kinds[2].nSamples = 4;
    kinds[2].nExtra = EXTRASAMPLE_UNASSALPHA;
    kinds[3].nOrientation = ORIENTATION_RIGHTTOP;
    kinds[4].nPhotometric = PHOTOMETRIC_PALETTE;
    kinds[4].vctMap.resize(3 * 256, 30000);
    kinds[5].nPhotometric = PHOTOMETRIC_MINISWHITE;
    kinds[6] = kinds[1];
    kinds[6].nSamples = 4;
    kinds[6].nPhotometric = PHOTOMETRIC_SEPARATED;
    kinds[7] = kinds[2];
    kinds[7].bPlanar = true;
    kinds[7].nOrientation = ORIENTATION_LEFTBOT;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        kinds[i].nWidth = 3 + static_cast<int>(i);
        kinds[i].nHeight = 5;
    }
    return kinds;
}

std::vector<unsigned char> SamplesOf(const STiff& kind)
{
    std::vector<unsigned char> samples(static_cast<std::size_t>(kind.nWidth * kind.nHeight * kind.nSamples));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<unsigned char>(i * 37 + samples.size());
    return samples;
}

/// A grey page of one pixel behind others.
/// @param nKind  its subfile type
void AppendPixel(const QString& path, unsigned char value, quint32 nKind = 0, double dblDpi = 0.0)
{
    TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "a");
    QVERIFY(pTiff);
    SetTags(pTiff, STiff());
    TIFFSetField(pTiff, TIFFTAG_SUBFILETYPE, nKind);
    if (dblDpi > 0.0) {
        TIFFSetField(pTiff, TIFFTAG_XRESOLUTION, dblDpi);
        TIFFSetField(pTiff, TIFFTAG_YRESOLUTION, dblDpi);
        TIFFSetField(pTiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    }
    TIFFWriteEncodedStrip(pTiff, 0, &value, 1);
    TIFFClose(pTiff);
}

QByteArray Number(quint32 nValue, int nBytes)
{
    const quint32 nLittle = qToLittleEndian(nValue);
    return QByteArray(reinterpret_cast<const char*>(&nLittle), nBytes);
}

/// An entry of a directory: the number itself, or where so many numbers are.
QByteArray Entry(int nTag, int nType, quint32 nCount, quint32 nValue)
{
    return Number(static_cast<quint32>(nTag), 2) + Number(static_cast<quint32>(nType), 2) +
           Number(nCount, 4) + Number(nValue, 4);
}

/// A directory of a grey image in one strip.
/// @param text  the entry of a text, or nothing
QByteArray Directory(int nSide, quint32 nPixels, quint32 nNext, const QByteArray& text = {})
{
    const quint32 nWidth = static_cast<quint32>(nSide);
    const QByteArray entries = Entry(TIFFTAG_IMAGEWIDTH, TIFF_LONG, 1, nWidth) +
                               Entry(TIFFTAG_IMAGELENGTH, TIFF_LONG, 1, nWidth) +
                               Entry(TIFFTAG_BITSPERSAMPLE, TIFF_SHORT, 1, 8) +
                               Entry(TIFFTAG_PHOTOMETRIC, TIFF_SHORT, 1, PHOTOMETRIC_MINISBLACK) + text +
                               Entry(TIFFTAG_STRIPOFFSETS, TIFF_LONG, 1, nPixels) +
                               Entry(TIFFTAG_STRIPBYTECOUNTS, TIFF_LONG, 1, nWidth * nWidth);
    return Number(static_cast<quint32>(entries.size() / 12), 2) + entries + Number(nNext, 4);
}

constexpr quint32 kHeadBytes = 8;

QByteArray Head(quint32 nFirst)
{
    return QByteArray("II*\0", 4) + Number(nFirst, 4);
}

/// Whether pixels, as a codec gives them (red in the lowest byte), are those of an image without alpha.
bool SameAs(const std::vector<quint32>& raster, const CImage& image)
{
    const quint32* pPixel = raster.data();
    const int nLast = image.GetChannel() == 1 ? 0 : 2;
    for (int y = 0; y < image.GetHeight(); ++y) {
        const unsigned char* p = image.GetRows()[y];
        for (int x = 0; x < image.GetWidth(); ++x, ++pPixel, p += nLast + 1)
            if (p[0] != TIFFGetR(*pPixel) || p[nLast / 2] != TIFFGetG(*pPixel) ||
                p[nLast] != TIFFGetB(*pPixel))
                return false;
    }
    return true;
}

double CpuSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}
} // namespace

class tst_LoadAll : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aFileOfOneImageIsWhatLoadMakes();
    void whatLoadRefusesIsRefusedForTheSameReason();
    void pagesOfEachKindAreWhatLoadMakesOfThemAlone();
    void realPagesAreWhatTheCodecShows();
    void reducedCopiesAndMasksAreNoPages();
    void pagesAreDeferredWithWhatTheFileSays();
    void pagesStayWhenTheFileIsReplaced();
    void directoriesInARingEnd_data();
    void directoriesInARingEnd();
    void aPageThatCannotBeReadIsWhite();
    void aPageWithoutASizeHasThatOfTheFirst();
    void theNumberIsBounded();
    void whatDirectoriesShareIsNotReadWithoutEnd();
    void itCanBeCancelled();
};

void tst_LoadAll::aFileOfOneImageIsWhatLoadMakes()
{
    for (const char* name :
         {"png/basn2c08.png", "tiff/hopper_lzw.tif", "broken/peacock.default.truncated.jpeg"}) {
        const QString path = TestDataPath(QString::fromLatin1(name));
        CImage image;
        QVERIFY2(LoadFile(image, path) == 0, name);
        std::string strFailure = "old";
        const Images images = All(path, &strFailure);
        QCOMPARE(images.size(), std::size_t(1));
        QCOMPARE(strFailure, std::string());
        QVERIFY(SamePixels(*images[0], image));
        QCOMPARE(images[0]->GetNotes(), image.GetNotes());
        QCOMPARE(images[0]->GetName(), image.GetName());
        QCOMPARE(images[0]->GetFolder(), image.GetFolder());
        QCOMPARE(images[0]->GetMetadata()->resolutionX, image.GetMetadata()->resolutionX);
        QCOMPARE(images[0]->GetMetadata()->profile, image.GetMetadata()->profile);
    }
}

void tst_LoadAll::whatLoadRefusesIsRefusedForTheSameReason()
{
    for (const char* name :
         {"nowhere.png", "tiff", "LICENCES.md", "broken/no-frames.gif", "broken/xd0n2c08.png"}) {
        const QString path = TestDataPath(QString::fromLatin1(name));
        CImage image;
        std::string strFailure;
        QVERIFY(LoadFile(image, path) != 0);
        QVERIFY(All(path, &strFailure).empty());
        QCOMPARE(strFailure, image.GetFailureReason());
    }
}

void tst_LoadAll::pagesOfEachKindAreWhatLoadMakesOfThemAlone()
{
    const CFolder folder;
    const std::vector<STiff> kinds = Kinds();
    for (const char* pMode : {"a", "ab", "a8"}) {
        const QString path = folder.Path(pMode);
        for (STiff kind : kinds) {
            kind.pMode = pMode;
            WriteTiff(path, kind, SamplesOf(kind));
        }
        const Images images = All(path);
        QCOMPARE(images.size(), kinds.size());
        for (std::size_t i = images.size(); i-- > 0;) {
            const QString alone = folder.Path("alone.tif");
            WriteTiff(alone, kinds[i], SamplesOf(kinds[i]));
            CImage image;
            QCOMPARE(LoadFile(image, alone), 0);
            QCOMPARE(images[i]->GetWidth(), image.GetWidth());
            QVERIFY2(SamePixels(*images[i], image), QByteArray::number(int(i)).constData());
            QVERIFY(images[i]->GetNotes().empty());
            QCOMPARE(images[i]->GetMetadata()->orientation, kinds[i].nOrientation);
        }
    }
}

void tst_LoadAll::realPagesAreWhatTheCodecShows()
{
    const CQuietDecoders quiet;
    for (const char* name : {"tiff/multipage.tiff", "tiff/g4-multi.tiff"}) {
        const QString path = TestDataPath(QString::fromLatin1(name));
        const Images images = All(path);
        TIFF* pTiff = TIFFOpen(path.toUtf8().constData(), "r");
        QVERIFY(pTiff);
        QCOMPARE(images.size(), std::size_t(TIFFNumberOfDirectories(pTiff)));
        QVERIFY(images.size() > 1);
        for (std::size_t i = 0; i < images.size(); ++i) {
            QCOMPARE(TIFFSetDirectory(pTiff, static_cast<tdir_t>(i)), 1);
            const auto nWidth = static_cast<quint32>(images[i]->GetWidth());
            const auto nHeight = static_cast<quint32>(images[i]->GetHeight());
            std::vector<quint32> raster(std::size_t(nWidth) * nHeight);
            QCOMPARE(TIFFReadRGBAImageOriented(pTiff, nWidth, nHeight, raster.data(), ORIENTATION_TOPLEFT, 1),
                     1);
            QVERIFY2(SameAs(raster, *images[i]), name);
        }
        TIFFClose(pTiff);
    }
}

void tst_LoadAll::reducedCopiesAndMasksAreNoPages()
{
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    AppendPixel(path, 10, FILETYPE_REDUCEDIMAGE); // the first is a page in every case
    AppendPixel(path, 20, FILETYPE_REDUCEDIMAGE);
    AppendPixel(path, 30);
    AppendPixel(path, 40, FILETYPE_MASK);
    AppendPixel(path, 50, FILETYPE_PAGE);
    const Images images = All(path);
    QCOMPARE(images.size(), std::size_t(3));
    for (std::size_t i = 0; i < 3; ++i)
        QCOMPARE(PixelOf(*images[i], 0, 0), std::vector<int>{static_cast<int>(10 + 20 * i)});
}

void tst_LoadAll::pagesAreDeferredWithWhatTheFileSays()
{
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    for (int i = 0; i < 3; ++i)
        AppendPixel(path, static_cast<unsigned char>(i), 0, 100.0 * (i + 1));
    const Images images = All(path);
    QCOMPARE(images.size(), std::size_t(3));
    QVERIFY(images[0]->HasPixels() && !images[0]->IsDeferred());
    for (std::size_t i = 0; i < 3; ++i) {
        QCOMPARE(images[i]->IsDeferred() && !images[i]->HasPixels(), i > 0);
        QCOMPARE(images[i]->GetMetadata()->resolutionX, 100.0 * double(i + 1));
        QCOMPARE(images[i]->GetName(), std::wstring(L"a.tif"));
        QCOMPARE(images[i]->GetFolder(), QFileInfo(path).path().toStdWString());
    }
    for (int nRound = 0; nRound < 2; ++nRound) {
        QCOMPARE(PixelOf(*images[2], 0, 0), std::vector<int>{2});
        QCOMPARE(images[2]->GetMetadata()->resolutionX, 300.0);
        QCOMPARE(images[2]->DropPixels(), nRound == 0 || images[2]->IsDeferred());
    }
}

void tst_LoadAll::pagesStayWhenTheFileIsReplaced()
{
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    AppendPixel(path, 10);
    AppendPixel(path, 20);
    AppendPixel(path, 30);
    const Images images = All(path);
    QCOMPARE(images.size(), std::size_t(3));
    QCOMPARE(images[0]->Save(path.toStdWString()), 0);
    QCOMPARE(PixelOf(*images[1], 0, 0), std::vector<int>{20});
    QVERIFY(QFile::remove(path));
    QCOMPARE(PixelOf(*images[2], 0, 0), std::vector<int>{30});
}

void tst_LoadAll::directoriesInARingEnd_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("count");
    QTest::newRow("of one") << QStringLiteral("broken/multipage_single_frame_loop.tiff") << 1;
    QTest::newRow("of several") << QStringLiteral("broken/multipage_multiple_frame_loop.tiff") << 2;
}

void tst_LoadAll::directoriesInARingEnd()
{
    QFETCH(QString, name);
    QFETCH(int, count);
    const CQuietDecoders quiet;
    const Images images = All(TestDataPath(name));
    QCOMPARE(static_cast<int>(images.size()), count);
    for (const auto& pImage : images)
        QVERIFY(static_cast<const CImage&>(*pImage).GetData() && pImage->GetNotes().empty());
}

void tst_LoadAll::aPageThatCannotBeReadIsWhite()
{
    const CQuietDecoders quiet;
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    const quint32 nDirectory = static_cast<quint32>(Directory(1, 0, 0).size());
    const quint32 nSecond = kHeadBytes + nDirectory;
    const quint32 nThird = nSecond + nDirectory;
    const quint32 nPixels = nThird + nDirectory;
    WriteFile(path, Head(kHeadBytes) + Directory(2, nPixels, nSecond) + Directory(3, nPixels + 2, nThird) +
                        Directory(2, nPixels, 0) + "\1\2\3\4");
    std::string strFailure;
    const Images images = All(path, &strFailure);
    QCOMPARE(images.size(), std::size_t(3));
    QCOMPARE(strFailure, std::string());
    QCOMPARE(images[1]->GetWidth(), 3);
    for (int nRound = 0; nRound < 2; ++nRound) {
        QCOMPARE(PixelOf(*images[1], 2, 2), kWhite);
        QCOMPARE(
            images[1]->GetNotes(),
            std::vector<std::string>{"Page 2 of 3 cannot be read. The TIFF file is damaged, too large or "
                                     "of an unsupported kind."});
        QCOMPARE(PixelOf(*images[2], 1, 1), std::vector<int>{4});
        images[1]->DropPixels();
    }
}

void tst_LoadAll::aPageWithoutASizeHasThatOfTheFirst()
{
    const CQuietDecoders quiet;
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    const quint32 nDirectory = static_cast<quint32>(Directory(1, 0, 0).size());
    const quint32 nSecond = kHeadBytes + nDirectory;
    const quint32 nThird = nSecond + nDirectory;
    const quint32 nPixels = nThird + nDirectory;
    for (const int nSide : {0, 30000}) { // more than the length of the file accounts for
        WriteFile(path, Head(kHeadBytes) + Directory(2, nPixels, nSecond) +
                            Directory(nSide, nPixels, nThird) + Directory(1, nPixels, 0) + "\1\2\3\4");
        const Images images = All(path);
        QCOMPARE(images.size(), std::size_t(3));
        QCOMPARE(images[1]->GetWidth(), 2);
        QCOMPARE(PixelOf(*images[1], 1, 1), kWhite);
        QCOMPARE(images[1]->GetNotes().size(), std::size_t(1));
        QCOMPARE(PixelOf(*images[2], 0, 0), std::vector<int>{1});
    }
}

void tst_LoadAll::theNumberIsBounded()
{
    constexpr int kDirectories = 12000;
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    const quint32 nDirectory = static_cast<quint32>(Directory(1, 0, 0).size());
    QByteArray content = Head(kHeadBytes);
    for (quint32 i = 0; i < kDirectories; ++i)
        content += Directory(1, kHeadBytes + 1, kHeadBytes + (i + 1) * nDirectory);
    WriteFile(path, content);
    std::string strFailure;
    const double dblStart = CpuSeconds();
    const Images images = All(path, &strFailure);
    QCOMPARE(images.size(), std::size_t(kMostImagesOfFile));
    QCOMPARE(strFailure, std::string("Only the first 10000 of more than 10000 pages were loaded."));
    QVERIFY(CpuSeconds() - dblStart < 5.0);
    QVERIFY(static_cast<const CImage&>(*images.back()).GetData() && images.back()->GetNotes().empty());
    QCOMPARE(All(path, &strFailure, 2).size(), std::size_t(2));
    QCOMPARE(strFailure, std::string("Only the first 2 of more than 10000 pages were loaded."));
}

void tst_LoadAll::whatDirectoriesShareIsNotReadWithoutEnd()
{
    const CQuietDecoders quiet;
    constexpr quint32 kDirectories = 5000;
    constexpr quint32 kTextBytes = 1 << 20;
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    const quint32 nText = kHeadBytes;
    const auto make = [=](quint32 nNext) {
        return Directory(1, nText, nNext, Entry(TIFFTAG_IMAGEDESCRIPTION, TIFF_ASCII, kTextBytes, nText));
    };
    const quint32 nStart = kHeadBytes + kTextBytes;
    const quint32 nDirectory = static_cast<quint32>(make(0).size());
    QByteArray content = Head(nStart) + QByteArray(static_cast<int>(kTextBytes) - 1, 'a') + '\0';
    for (quint32 i = 0; i < kDirectories; ++i)
        content += make(i + 1 < kDirectories ? nStart + (i + 1) * nDirectory : 0);
    WriteFile(path, content);
    std::string strFailure;
    const Images images = All(path, &strFailure);
    QVERIFY2(images.size() > 10 && images.size() < 50, QByteArray::number(int(images.size())).constData());
    QCOMPARE(strFailure, "Only the first " + std::to_string(images.size()) + " of 5000 pages were loaded.");
    QCOMPARE(PixelOf(*images.back(), 0, 0), std::vector<int>{'a'});
}

void tst_LoadAll::itCanBeCancelled()
{
    const CFolder folder;
    const QString path = folder.Path("a.tif");
    AppendPixel(path, 10);
    AppendPixel(path, 20);
    const Images images = All(path);
    Vantor::CProgress progress;
    QVERIFY(progress.Cancel());
    {
        const Vantor::CProgress::CScope scope(&progress);
        std::string strFailure;
        QVERIFY(All(path, &strFailure).empty());
        QCOMPARE(strFailure, std::string("It was cancelled."));
        QVERIFY(!static_cast<const CImage&>(*images[1]).GetData());
    }
    QCOMPARE(PixelOf(*images[1], 0, 0), std::vector<int>{20});
}

VANTOR_CORE_TEST_MAIN(tst_LoadAll)
#include "tst_LoadAll.moc"

// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// LoadAll on GIF files, beside a plain compositor.
#include "tests/Vantor/image/GifMaker.h"
#include "tests/Vantor/image/ImageFiles.h"
#include "tests/support/TestMain.h"

#include <Vantor/CProgress.h>
#include <Vantor/image/LoadAll.h>

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <ctime>
#include <gif_lib.h>
#include <numeric>
#include <random>
#include <thread>

using namespace GifMaker;
using namespace ImageFiles;
using Vantor::Algorithms::kMostImagesOfFile;
using Vantor::Algorithms::LoadAll;

namespace
{
using Images = std::vector<std::shared_ptr<CImage>>;
using Screen4 = std::vector<Color>; ///< R, G, B, A of each pixel, row after row

/// A frame and what is said of it.
struct SStep {
    SFrame frame;
    int nDisposal = 0;
    int nDelay = 0;
    int nTransparent = -1;
};

QByteArray FileOf(int nWidth, int nHeight, const std::vector<SStep>& steps)
{
    QByteArray bytes = Screen(nWidth, nHeight);
    for (const SStep& step : steps)
        bytes += Control(step.nDisposal, step.nDelay, step.nTransparent) + Frame(step.frame);
    return bytes + ';';
}

/// Calls set(place on the screen, index of the colour) for the pixels of a frame that lie on the screen.
template <class TSet> void ForPixelsOf(const SFrame& frame, int nWidth, int nHeight, TSet set)
{
    for (int i = 0; i < frame.nWidth * frame.nHeight; ++i) {
        const int x = frame.nLeft + i % frame.nWidth;
        const int y = frame.nTop + i / frame.nWidth;
        if (x < nWidth && y < nHeight)
            set(static_cast<std::size_t>(y * nWidth + x), static_cast<unsigned char>(frame.indexes[i]));
    }
}

/// The plain compositor: the screen while each frame is shown.
std::vector<Screen4> Composed(int nWidth, int nHeight, const std::vector<SStep>& steps)
{
    std::vector<Screen4> shown;
    Screen4 screen(static_cast<std::size_t>(nWidth * nHeight), Color{0, 0, 0, 0});
    for (const SStep& step : steps) {
        const Screen4 before = screen;
        const auto& colors = step.frame.colors.empty() ? kColors : step.frame.colors;
        ForPixelsOf(step.frame, nWidth, nHeight, [&](std::size_t nPlace, unsigned char nIndex) {
            if (nIndex == step.nTransparent)
                return;
            const Color color = nIndex < colors.size() ? colors[nIndex] : Color{0, 0, 0};
            screen[nPlace] = {color[0], color[1], color[2], 255};
        });
        shown.push_back(screen);
        if (step.nDisposal == 2)
            ForPixelsOf(step.frame, nWidth, nHeight, [&](std::size_t nPlace, unsigned char) {
                screen[nPlace] = {0, 0, 0, 0};
            });
        if (step.nDisposal == 3)
            screen = before;
    }
    return shown;
}

/// Whether an image shows a screen: with three channels it has to be opaque.
bool Shows(const CImage& image, const Screen4& screen)
{
    for (std::size_t i = 0; i < screen.size(); ++i) {
        const int nWidth = image.GetWidth();
        Color pixel = PixelOf(image, static_cast<int>(i) % nWidth, static_cast<int>(i) / nWidth);
        if (pixel.size() == 3)
            pixel.push_back(255);
        if (pixel != screen[i])
            return false;
    }
    return screen.size() == static_cast<std::size_t>(image.GetWidth() * image.GetHeight());
}

Images LoadBytes(const QByteArray& content, std::string* pFailure = nullptr, int nLimit = kMostImagesOfFile)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.gif"));
    WriteFile(path, content);
    std::string strFailure;
    Images images = LoadAll(path.toStdWString(), nLimit, pFailure ? *pFailure : strFailure);
    return images;
}

std::vector<SStep> RandomSteps(std::mt19937& random, int nWidth, int nHeight)
{
    const auto upTo = [&random](int nMost) { return static_cast<int>(random() % unsigned(nMost + 1)); };
    std::vector<SStep> steps(static_cast<std::size_t>(1 + upTo(14)));
    for (SStep& step : steps) {
        const bool bFull = upTo(2) == 0;
        SFrame& frame = step.frame;
        frame.nLeft = bFull ? 0 : upTo(nWidth);
        frame.nTop = bFull ? 0 : upTo(nHeight);
        frame.nWidth = bFull ? nWidth : 1 + upTo(nWidth);
        frame.nHeight = bFull ? nHeight : 1 + upTo(nHeight);
        for (int i = 0; i < frame.nWidth * frame.nHeight; ++i)
            frame.indexes.append(static_cast<char>(upTo(4)));
        if (upTo(3) == 0)
            frame.colors = kOtherColors;
        step.nDisposal = upTo(1) == 0 ? 1 : upTo(5);
        step.nTransparent = upTo(1) == 0 ? -1 : upTo(3);
    }
    return steps;
}

/// How many channels an image of a list has, as LoadAll promises.
int PromisedChannels(const Images& images, const std::vector<SStep>& steps, std::size_t nFrame)
{
    bool bOpaque = images.front()->GetChannel() == 3;
    for (std::size_t i = 0; i < nFrame; ++i)
        bOpaque = bOpaque && steps[i].nDisposal != 2 && (i > 0 || steps[i].nDisposal != 3);
    return bOpaque ? 3 : 4;
}

SStep Step(int nSide, char index, int nDisposal = 0, int nDelay = 0)
{
    return {{0, 0, nSide, nSide, QByteArray(nSide * nSide, index)}, nDisposal, nDelay};
}

double CpuSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// The frames of a file as its codec gives them to the plain compositor. Colours go beside the indexes.
std::vector<SStep> StepsOf(const QString& strPath, int& nWidth, int& nHeight)
{
    GifFileType* pGif = DGifOpenFileName(strPath.toUtf8().constData(), nullptr);
    if (!pGif || DGifSlurp(pGif) != GIF_OK)
        return {};
    nWidth = pGif->SWidth;
    nHeight = pGif->SHeight;
    std::vector<SStep> steps;
    for (int i = 0; i < pGif->ImageCount; ++i) {
        const SavedImage& saved = pGif->SavedImages[i];
        const GifImageDesc& head = saved.ImageDesc;
        SStep step;
        step.frame = {head.Left, head.Top, head.Width, head.Height,
                      QByteArray(reinterpret_cast<const char*>(saved.RasterBits), head.Width * head.Height)};
        const ColorMapObject* pMap = head.ColorMap ? head.ColorMap : pGif->SColorMap;
        for (int c = 0; pMap && c < pMap->ColorCount; ++c)
            step.frame.colors.push_back({pMap->Colors[c].Red, pMap->Colors[c].Green, pMap->Colors[c].Blue});
        GraphicsControlBlock control{0, false, 0, NO_TRANSPARENT_COLOR};
        DGifSavedExtensionToGCB(pGif, i, &control);
        step.nDisposal = control.DisposalMode;
        step.nTransparent = control.TransparentColor;
        steps.push_back(step);
    }
    DGifCloseFile(pGif, nullptr);
    return steps;
}
} // namespace

class tst_LoadAllGif : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreWhatAPlainCompositorMakes();
    void realFilesAreWhatAPlainCompositorMakes();
    void theFirstIsWhatLoadMakes();
    void framesAreDeferredAndKnowTheirSize();
    void notesTellHowLongAFrameIsShown();
    void aFrameThatIsCutLeavesWhatIsBelowIt();
    void severalThreadsGetTheSameFrames();
    void theNumberIsBounded();
    void theLimitIsKept();
    void framesThatClaimTooMuchAreLeftOut();
    void lateFramesTakeLittleTimeOnceAnEarlierOneIsThere();
    void composingCanBeCancelled();
};

void tst_LoadAllGif::framesAreWhatAPlainCompositorMakes()
{
    std::mt19937 random(17);
    int nThree = 0;
    for (int nFile = 0; nFile < 300; ++nFile) {
        const int nWidth = 1 + static_cast<int>(random() % 9);
        const int nHeight = 1 + static_cast<int>(random() % 9);
        const std::vector<SStep> steps = RandomSteps(random, nWidth, nHeight);
        const std::vector<Screen4> expected = Composed(nWidth, nHeight, steps);
        const Images images = LoadBytes(FileOf(nWidth, nHeight, steps));
        QCOMPARE(images.size(), steps.size());
        std::vector<std::size_t> order(images.size());
        std::iota(order.begin(), order.end(), std::size_t(0));
        for (int nRound = 0; nRound < 3; ++nRound) {
            std::shuffle(order.begin(), order.end(), random);
            for (const std::size_t i : order) {
                const QByteArray which = QByteArray::number(nFile) + ", " + QByteArray::number(int(i));
                QVERIFY2(Shows(*images[i], expected[i]), which.constData());
                QCOMPARE(images[i]->GetChannel(), PromisedChannels(images, steps, i));
                nThree += i > 0 && images[i]->GetChannel() == 3 ? 1 : 0;
                images[i]->DropPixels();
            }
        }
    }
    QVERIFY(nThree > 100);
}

void tst_LoadAllGif::realFilesAreWhatAPlainCompositorMakes()
{
    int nSeveral = 0;
    const QDir folder(TestDataPath(QStringLiteral("gif")));
    for (const QString& strName : folder.entryList({QStringLiteral("*.gif")})) {
        int nWidth = 0;
        int nHeight = 0;
        const std::vector<SStep> steps = StepsOf(folder.filePath(strName), nWidth, nHeight);
        std::string strFailure;
        const Images images = LoadAll(folder.filePath(strName).toStdWString(), kMostImagesOfFile, strFailure);
        QCOMPARE(images.size(), steps.size());
        QCOMPARE(strFailure, std::string());
        const std::vector<Screen4> expected = Composed(nWidth, nHeight, steps);
        for (std::size_t i = images.size(); i-- > 0;)
            QVERIFY2(Shows(*images[i], expected[i]), qPrintable(strName));
        nSeveral += images.size() > 1 ? 1 : 0;
    }
    QVERIFY(nSeveral >= 2);
}

void tst_LoadAllGif::theFirstIsWhatLoadMakes()
{
    for (const char* name :
         {"gif/animated-red-blue.gif", "gif/muybridge.gif", "gif/background-color.gif",
          "broken/frame-out-of-bounds.gif", "broken/hippopotamus.interlaced.truncated.gif"}) {
        const QString path = TestDataPath(QString::fromLatin1(name));
        CImage image;
        QCOMPARE(LoadFile(image, path), 0);
        std::string strFailure;
        const Images images = LoadAll(path.toStdWString(), kMostImagesOfFile, strFailure);
        QVERIFY2(!images.empty() && SamePixels(image, *images.front()), name);
        QCOMPARE(images.back()->GetName(), image.GetName());
        QCOMPARE(images.back()->GetFolder(), image.GetFolder());
    }
}

void tst_LoadAllGif::framesAreDeferredAndKnowTheirSize()
{
    const Images images = LoadBytes(FileOf(5, 5, {Step(5, 1), Step(3, 2), Step(2, 3)}));
    QCOMPARE(images.size(), std::size_t(3));
    QVERIFY(images[0]->HasPixels() && !images[0]->IsDeferred());
    for (std::size_t i = 1; i < 3; ++i) {
        QVERIFY(images[i]->IsDeferred() && !images[i]->HasPixels());
        QCOMPARE(images[i]->GetWidth(), 5);
        QCOMPARE(images[i]->GetHeight(), 5);
        QVERIFY(images[i]->GetNotes().empty());
    }
}

void tst_LoadAllGif::notesTellHowLongAFrameIsShown()
{
    using Notes = std::vector<std::string>;
    const Images images =
        LoadBytes(FileOf(2, 2, {Step(2, 1, 0, 10), Step(2, 2), Step(2, 2, 0, 7), Step(2, 2, 0, 60000)}));
    for (int nRound = 0; nRound < 2; ++nRound) {
        for (const auto& pImage : images)
            QVERIFY(static_cast<const CImage&>(*pImage).GetData());
        QCOMPARE(images[0]->GetNotes(), Notes{"Frame 1 of 4, shown for 0.1 s."});
        QCOMPARE(images[1]->GetNotes(), Notes{"Frame 2 of 4."});
        QCOMPARE(images[2]->GetNotes(), Notes{"Frame 3 of 4, shown for 0.07 s."});
        QCOMPARE(images[3]->GetNotes(), Notes{"Frame 4 of 4, shown for 600.0 s."});
        QVERIFY(images[1]->DropPixels());
    }
    QVERIFY(LoadBytes(FileOf(2, 2, {Step(2, 1, 0, 10)})).front()->GetNotes().empty());
}

void tst_LoadAllGif::aFrameThatIsCutLeavesWhatIsBelowIt()
{
    const QByteArray whole = FileOf(9, 9, {Step(9, 1), Step(9, 2)});
    const Images images = LoadBytes(whole.left(whole.size() - 50));
    QCOMPARE(images.size(), std::size_t(2));
    const CImage& second = *images[1];
    QCOMPARE(PixelOf(second, 0, 0), kColors[2]);
    QCOMPARE(PixelOf(second, 8, 8), kColors[1]);
    int nMissing = 0;
    for (int i = 0; i < 81; ++i)
        nMissing += PixelOf(second, i % 9, i / 9) == kColors[1] ? 1 : 0;
    QVERIFY(nMissing > 30 && nMissing < 60);
    QCOMPARE(second.GetNotes().size(), std::size_t(2));
    QCOMPARE(second.GetNotes()[1],
             "The file is incomplete: " + std::to_string(nMissing) + " pixels of the frame are missing.");
}

void tst_LoadAllGif::severalThreadsGetTheSameFrames()
{
    std::vector<SStep> steps;
    for (int i = 0; i < 60; ++i)
        steps.push_back({{i, i, 20, 20, QByteArray(400, char(i % 4))}, i % 4, 0});
    const std::vector<Screen4> expected = Composed(80, 80, steps);
    const Images images = LoadBytes(FileOf(80, 80, steps));
    std::atomic<int> nWrong{0};
    std::vector<std::thread> threads;
    for (unsigned nSeed = 0; nSeed < 3; ++nSeed)
        threads.emplace_back([&, nSeed] {
            std::vector<std::size_t> order(images.size());
            std::iota(order.begin(), order.end(), std::size_t(0));
            std::shuffle(order.begin(), order.end(), std::mt19937(nSeed));
            for (const std::size_t i : order)
                nWrong += Shows(*images[i], expected[i]) ? 0 : 1;
        });
    for (std::thread& thread : threads)
        thread.join();
    QCOMPARE(nWrong.load(), 0);
}

void tst_LoadAllGif::theNumberIsBounded()
{
    QByteArray content = Screen(1, 1);
    const QByteArray frame = Frame(Step(1, 1).frame);
    for (int i = 0; i < 100000; ++i)
        content += frame;
    std::string strFailure;
    const double dblStart = CpuSeconds();
    const Images images = LoadBytes(content, &strFailure);
    QCOMPARE(images.size(), std::size_t(kMostImagesOfFile));
    QCOMPARE(strFailure, std::string("Only the first 10000 frames were loaded."));
    QCOMPARE(PixelOf(*images.back(), 0, 0), kColors[1]);
    QVERIFY(CpuSeconds() - dblStart < 5.0);
}

void tst_LoadAllGif::theLimitIsKept()
{
    const QByteArray content = FileOf(2, 2, {Step(2, 0), Step(2, 1), Step(2, 2)});
    std::string strFailure;
    QCOMPARE(LoadBytes(content, &strFailure, 3).size(), std::size_t(3));
    QCOMPARE(strFailure, std::string());
    QCOMPARE(LoadBytes(content, &strFailure, 2).size(), std::size_t(2));
    QCOMPARE(strFailure, std::string("Only the first 2 frames were loaded."));
    QCOMPARE(LoadBytes(content, &strFailure, 0).size(), std::size_t(1));
    QCOMPARE(LoadBytes(content, &strFailure, 1 << 30).size(), std::size_t(3));
}

void tst_LoadAllGif::framesThatClaimTooMuchAreLeftOut()
{
    QByteArray content = Screen(1000, 1000) + Frame(Step(9, 1).frame);
    SFrame lie = Step(1, 1).frame;
    lie.nWidth = lie.nHeight = 60000;
    content += Control(2, 0, -1) + Frame(Step(1, 2).frame);
    for (int i = 0; i < 1000; ++i)
        content += Control(2, 0, -1) + Frame(lie);
    std::string strFailure;
    const Images images = LoadBytes(content, &strFailure);
    QCOMPARE(images.size(), std::size_t(2));
    QCOMPARE(strFailure,
             std::string("Only the first 2 frames were loaded; the GIF file is too short for more."));
}

void tst_LoadAllGif::lateFramesTakeLittleTimeOnceAnEarlierOneIsThere()
{
    constexpr int kFrames = 300;
    std::vector<SStep> steps;
    for (int i = 0; i < kFrames; ++i)
        steps.push_back(Step(40, static_cast<char>(i % 4), 1));
    const Images images = LoadBytes(FileOf(40, 40, steps));
    QCOMPARE(images.size(), std::size_t(kFrames));
    const auto seconds = [&images](std::size_t nFrame) {
        const double dblStart = CpuSeconds();
        static_cast<const CImage&>(*images[nFrame]).GetData();
        return CpuSeconds() - dblStart;
    };
    const double dblFromTheStart = seconds(kFrames - 1);
    double dblBackwards = 0.0;
    for (std::size_t i = kFrames - 1; i-- > kFrames - 51;)
        dblBackwards += seconds(i);
    QVERIFY2(dblBackwards < 5.0 * dblFromTheStart, // fifty times, if each began at the start
             qPrintable(QStringLiteral("%1 s, %2 s").arg(dblFromTheStart).arg(dblBackwards)));
}

void tst_LoadAllGif::composingCanBeCancelled()
{
    const Images images = LoadBytes(FileOf(3, 3, {Step(3, 0), Step(3, 1)}));
    Vantor::CProgress progress;
    QVERIFY(progress.Cancel());
    {
        const Vantor::CProgress::CScope scope(&progress);
        QVERIFY(!static_cast<const CImage&>(*images[1]).GetData());
        std::string strFailure;
        QVERIFY(LoadBytes(FileOf(3, 3, {Step(3, 0), Step(3, 1)}), &strFailure).empty());
        QCOMPARE(strFailure, std::string("It was cancelled."));
    }
    QCOMPARE(PixelOf(*images[1], 1, 1), kColors[1]);
}

VANTOR_CORE_TEST_MAIN(tst_LoadAllGif)
#include "tst_LoadAllGif.moc"

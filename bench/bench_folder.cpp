// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// bench_folder [files]: the viewer goes with Page Down through a folder of that many JPEG files of 24
// megapixels (10 without an argument), each read ahead. Per step: from the key until the view has painted the
// next image. Fails when the median takes longer than 60 ms, or what is read ahead more memory than allowed.
// Needs a display.
#include "CMainWindow.h"
#include "bench/BenchSupport.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CReadAhead.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int kWidth = 6000;
constexpr int kHeight = 4000;
constexpr double kMostMs = 60.0;
constexpr int kPatienceMs = 60000;
constexpr int kReadMs = 5000; // for the neighbours of an image

bool MakeFolder(const QString& strFolder, int nFiles)
{
    Vantor::Algorithms::CImage image;
    if (image.Create(kWidth, kHeight, 3, 8, Vantor::Algorithms::EImageType::Interleaved, 1) != 0)
        return false;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth * 3; ++x)
            image.GetPixel(0, y)[x] = static_cast<unsigned char>((x / 24 + y / 8) % 200 + x % 23);
    for (int i = 0; i < nFiles; ++i) {
        for (int x = 0; x < kWidth * 3; ++x)
            image.GetPixel(0, i)[x] = 255; // a line that tells it from the others
        if (image.Save(QStringLiteral("%1/%2.jpg").arg(strFolder).arg(i).toStdWString()) != 0)
            return false;
    }
    return true;
}

/// Handles events until the condition holds. @return whether it does
template <class Condition> bool WaitUntil(Condition holds)
{
    QElapsedTimer clock;
    clock.start();
    while (!holds() && clock.elapsed() < kPatienceMs)
        QApplication::processEvents(QEventLoop::AllEvents, 1);
    return holds();
}

/// Waits until everything that is wanted has been read.
void WaitForReading()
{
    QEventLoop loop;
    QObject::connect(&CReadAhead::Get(), &CReadAhead::signal_Done, &loop, &QEventLoop::quit);
    QTimer::singleShot(kReadMs, &loop, &QEventLoop::quit);
    loop.exec();
}

void PressPageDown(QWidget* pView)
{
    for (auto eType : {QEvent::KeyPress, QEvent::KeyRelease}) {
        QKeyEvent key(eType, Qt::Key_PageDown, Qt::NoModifier);
        QApplication::sendEvent(pView, &key);
    }
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    const int nFiles = argc > 1 ? std::atoi(argv[1]) : 10;
    const QTemporaryDir folder;
    if (nFiles < 2 || !MakeFolder(folder.path(), nFiles)) {
        std::fputs("cannot make the files\n", stderr);
        return 1;
    }
    CMainWindow window;
    window.show();
    auto* pView = window.findChild<CImageView2D*>();
    window.StartOpening({folder.filePath(QStringLiteral("0.jpg"))}, QStringLiteral("1x1"));
    if (!WaitUntil([&] { return pView->GetZoom() > 0.0; }))
        return 1;
    std::vector<double> steps;
    qint64 nMost = 0;
    for (int i = 1; i < nFiles; ++i) {
        WaitForReading();
        nMost = std::max(nMost, CReadAhead::Get().GetUsed());
        const unsigned int nBefore = pView->GetImageUID();
        const double dblSeconds = VantorBench::SecondsOf([&] {
            PressPageDown(pView);
            WaitUntil([&] { return pView->GetImageUID() != nBefore; });
            pView->repaint();
        });
        if (pView->GetImageUID() == nBefore) {
            std::fputs("the next image did not come\n", stderr);
            return 1;
        }
        steps.push_back(dblSeconds * 1000.0);
    }
    const double dblMedian = VantorBench::MedianOf(steps);
    std::printf(
        "%d files of %d x %d, read ahead: median %.1f ms, slowest %.1f ms from the key to the screen; "
        "%.0f MB of %.0f MB read ahead\n",
        nFiles, kWidth, kHeight, dblMedian, *std::max_element(steps.begin(), steps.end()), nMost / 1048576.0,
        CReadAhead::Get().GetLimit() / 1048576.0);
    return dblMedian <= kMostMs && nMost <= CReadAhead::Get().GetLimit() ? 0 : 1;
}

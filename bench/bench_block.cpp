// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// bench_block [megapixels]: the longest time in which the event loop does not turn, in milliseconds, while an
// image of that size (100 without an argument) is saved, opened, turned and filtered and a page is read: with
// SCenterOptions::bBackground off and on. Needs a display. Limit with the option on: 50 ms.
#include "tests/support/PauseProbe.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/log/CLogModel.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/process/operation/SProcessOperation.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QMainWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <memory>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERegionMode;
using Vantor::Geometry::CGeometry;
using ImagePtr = std::shared_ptr<CImage>;

namespace
{
constexpr double kLimitMs = 50.0;
constexpr int kTitleWidth = 24;

/// Smooth ground with noise, in which no format finds a short cut.
ImagePtr MakePicture(int nSide)
{
    auto pImage = std::make_shared<CImage>();
    if (pImage->Create(nSide, nSide, 3, 8, EImageType::Interleaved, 1) != 0)
        return nullptr;
    unsigned nNoise = 1;
    for (int y = 0; y < nSide; ++y) {
        unsigned char* pByte = pImage->GetRows()[y];
        for (int x = 0; x < 3 * nSide; ++x) {
            nNoise = nNoise * 1664525U + 1013904223U;
            pByte[x] = static_cast<unsigned char>((x / 48 + y / 16 + (nNoise >> 28)) & 0xFF);
        }
    }
    return pImage;
}

/// A page of A4 at 300 dots per inch, covered with a smaller one.
ImagePtr MakePage()
{
    CImage tile;
    auto pPage = std::make_shared<CImage>();
    if (tile.Load(QStringLiteral(VANTOR_BENCH_DATA "/ocr/phototest.tif").toStdWString()) != 0 ||
        pPage->Create(2480, 3508, tile.GetChannel(), 8, EImageType::Interleaved, 1) != 0)
        return nullptr;
    const auto nTile = static_cast<std::size_t>(tile.GetWidth() * tile.GetChannel());
    const auto nRow = static_cast<std::size_t>(pPage->GetWidth() * tile.GetChannel());
    for (int y = 0; y < pPage->GetHeight(); ++y)
        for (std::size_t x = 0; x < nRow; x += nTile)
            std::memcpy(pPage->GetRows()[y] + x, tile.GetRows()[y % tile.GetHeight()],
                        std::min(nTile, nRow - x));
    return pPage;
}

/// The centre in a window, and the clock on its thread.
class CBench
{
public:
    explicit CBench(bool bBackground)
    {
        m_window.setCentralWidget(m_pView);
        m_window.resize(1270, 900);
        m_center = std::make_unique<CCenterCtrl>(&m_model, m_pView, nullptr, nullptr, nullptr);
        SCenterOptions sOptions;
        sOptions.bBackground = bBackground;
        m_center->SetOptions(sOptions);
        m_nMedian = m_center->RegisterOperation(
            {QStringLiteral("Median 15x15"),
             {},
             [](CImage& image, const CGeometry*, const ProcessValues&, const ProcessProgress&) {
                 return image.MedianFilter(7, 7, nullptr, ERegionMode::All, 0.0) == 0
                            ? QString()
                            : QString::fromStdString(image.GetFailureReason());
             }});
        m_window.show();
        Settle();
    }

    CImageView2DCtrl* Ctrl() const
    {
        const auto item = CMVCManager::FindFirst([](const SMVC& each) {
            return each.pView && each.pView->windowTitle() == QLatin1String("Image View [0]");
        });
        return dynamic_cast<CImageViewerCtrl*>(item->pCtrl)->Get2DCtrl();
    }

    void Show(const ImagePtr& pImage)
    {
        Ctrl()->GetImageModel()->SetImages({pImage});
        Settle();
    }

    void Run(int nTool)
    {
        m_center->OpenTool(nTool, 0);
        Settle();
        const QString strTitle = m_center->GetToolTitles().at(nTool);
        for (auto* pDlg : m_window.findChildren<CImage2DProcessBaseDlg*>())
            if (pDlg->windowTitle() == strTitle)
                m_pRun = pDlg;
    }
    void Median() { Run(m_nMedian); }
    void Press() { Q_EMIT m_pRun->signal_Run(); }

    /// The longest pause while something is done and shown.
    double LongestPause(const std::function<void()>& doing)
    {
        Settle();
        m_probe.Start();
        doing();
        Settle();
        return m_probe.LongestMs();
    }

private:
    /// Until nothing runs any more and everything is painted.
    void Settle()
    {
        for (int nTurns = 0; nTurns < 20;) {
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
            nTurns = CJobs::Get().GetJobs().empty() ? nTurns + 1 : 0;
        }
    }
    QMainWindow m_window;
    CCenterModel m_model;
    CCenterView* m_pView = new CCenterView(&m_model, &m_window);
    std::unique_ptr<CCenterCtrl> m_center;
    CImage2DProcessBaseDlg* m_pRun = nullptr;
    CPauseProbe m_probe;
    int m_nMedian = -1;
};

struct SDoing {
    QString strTitle;
    std::function<void(CBench&)> prepare;
    std::function<void(CBench&)> doing;
};

std::vector<SDoing> Doings(const ImagePtr& pPicture, const ImagePtr& pPage, const QTemporaryDir& folder)
{
    constexpr int kOcr = 2; // the place of the tool
    std::vector<SDoing> vctDoings;
    const auto show = [pPicture](CBench& bench) { bench.Show(pPicture); };
    for (const char* pSuffix : {"jpg", "png", "tif"}) {
        const QString strFile = folder.filePath(QStringLiteral("a.") + QLatin1String(pSuffix));
        vctDoings.push_back({QStringLiteral("save ") + QLatin1String(pSuffix), show,
                             [strFile](CBench& bench) { bench.Ctrl()->SaveFile(strFile); }});
        vctDoings.push_back({QStringLiteral("open ") + QLatin1String(pSuffix), [](CBench&) {},
                             [strFile](CBench& bench) { bench.Ctrl()->LoadFile(strFile); }});
    }
    vctDoings.push_back({QStringLiteral("rotate"), show, [](CBench& bench) { bench.Ctrl()->RotateRight(); }});
    const auto median = [show](CBench& bench) {
        show(bench);
        bench.Median();
    };
    vctDoings.push_back({QStringLiteral("median 15x15"), median, [](CBench& bench) { bench.Press(); }});
    const auto page = [pPage](CBench& bench) {
        bench.Show(pPage);
        bench.Run(kOcr);
    };
    vctDoings.push_back({QStringLiteral("read an A4 page"), page, [](CBench& bench) { bench.Press(); }});
    return vctDoings;
}

std::vector<double> Measure(bool bBackground, const std::vector<SDoing>& vctDoings)
{
    std::vector<double> vctPauses;
    CBench bench(bBackground);
    for (const SDoing& each : vctDoings) {
        each.prepare(bench);
        vctPauses.push_back(bench.LongestPause([&] { each.doing(bench); }));
        bench.Show(nullptr);
    }
    return vctPauses;
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    const double dblMegapixels = argc > 1 ? std::max(1.0, std::atof(argv[1])) : 100.0;
    const ImagePtr pPicture = MakePicture(static_cast<int>(std::sqrt(dblMegapixels * 1e6)));
    const ImagePtr pPage = MakePage();
    const QTemporaryDir folder;
    if (!pPicture || !pPage || !folder.isValid()) {
        std::fputs("The images cannot be made.\n", stderr);
        return 1;
    }
    const auto vctDoings = Doings(pPicture, pPage, folder);
    const auto vctOff = Measure(false, vctDoings);
    const auto vctOn = Measure(true, vctDoings);
    std::printf("longest pause of the event loop, %.0f megapixels\n%-*s %12s %12s\n", dblMegapixels,
                kTitleWidth, "", "off, ms", "on, ms");
    bool bGood = true;
    for (std::size_t i = 0; i < vctDoings.size(); ++i) {
        std::printf("%-*s %12.1f %12.1f\n", kTitleWidth, qPrintable(vctDoings[i].strTitle), vctOff[i],
                    vctOn[i]);
        bGood = bGood && vctOn[i] <= kLimitMs;
    }
    return bGood ? 0 : 1;
}

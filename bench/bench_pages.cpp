// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// bench_pages [pages]: a document of that many pages of text and pictures (300 without an argument), with
// SCenterOptions::bDeferredPages and without it: the time until its first page is on the screen, beside that
// of poppler in this process; the time until all thumbnails are there; the memory of host and workers; the
// longest pause of the event loop while the document is opened, paged through and closed. Needs a display.
#include "tests/support/ChildProcesses.h"
#include "tests/support/PauseProbe.h"
#include "tests/support/TestPdf.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/job/CJobs.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <VantorCommon/view2d/CPageMemory.h>

#include <QApplication>
#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <cstdio>
#include <functional>
#include <memory>
#include <thread>

#include <poppler-qt5.h>

namespace
{
constexpr double kDpi = 144.0;
constexpr double kMegabyte = 1024.0 * 1024.0;
constexpr int kPictureWidth = 1240; // A4 at 150 dpi
constexpr int kPictureHeight = 1754;
constexpr int kPictureEvery = 5; // every fifth page is a scan

QByteArray StreamOf(const QByteArray& bytes, const QByteArray& entries = QByteArray())
{
    return "<< /Length " + QByteArray::number(bytes.size()) + entries + " >>\nstream\n" + bytes +
           "\nendstream";
}

/// 56 lines of 90 characters, of each page others.
QByteArray Text(int nPage)
{
    QByteArray drawing = "BT /F1 10 Tf 14 TL 40 800 Td\n";
    for (int nLine = 0; nLine < 56; ++nLine) {
        QByteArray text;
        for (int i = 0; i < 90; ++i)
            text += i % 7 == 6 ? ' ' : static_cast<char>('a' + (nPage * 13 + nLine * 31 + i * 17) % 26);
        drawing += "(" + text + ") Tj T*\n";
    }
    return StreamOf(drawing + "ET");
}

QByteArray Picture()
{
    QImage picture(kPictureWidth, kPictureHeight, QImage::Format_RGB888);
    for (int y = 0; y < kPictureHeight; ++y)
        for (int x = 0; x < kPictureWidth; ++x)
            picture.setPixel(x, y,
                             qRgb(200 + (x / 16 + y / 16) % 50, 255 - (x * y / 997) % 60, 210 + x % 40));
    QBuffer jpeg;
    jpeg.open(QIODevice::WriteOnly);
    picture.save(&jpeg, "JPEG", 85);
    return StreamOf(jpeg.data(), " /Type /XObject /Subtype /Image /Width " +
                                     QByteArray::number(kPictureWidth) + " /Height " +
                                     QByteArray::number(kPictureHeight) +
                                     " /ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /DCTDecode");
}

QByteArray Document(int nPages)
{
    QByteArray kids;
    QList<QByteArray> lstPages;
    for (int i = 0; i < nPages; ++i) {
        const QByteArray contents = QByteArray::number(6 + 2 * i);
        kids += QByteArray::number(5 + 2 * i) + " 0 R ";
        lstPages << "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents " + contents +
                        " 0 R /Resources << /Font << /F1 3 0 R >> /XObject << /I 4 0 R >> >> >>"
                 << (i % kPictureEvery == kPictureEvery - 1 ? StreamOf("595 0 0 842 0 0 cm /I Do") : Text(i));
    }
    return MakePdf(
        QList<QByteArray>{"<< /Type /Catalog /Pages 2 0 R >>",
                          "<< /Type /Pages /Kids [" + kids + "] /Count " + QByteArray::number(nPages) + " >>",
                          "<< /Type /Font /Subtype /Type1 /BaseFont /Times-Roman >>", Picture()} +
        lstPages);
}

/// The share of a process in the memory that it has, in bytes.
qint64 ShareOf(pid_t nProcess)
{
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(nProcess));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (line.startsWith("Pss:"))
            return line.mid(4).simplified().split(' ').value(0).toLongLong() * 1024;
    return 0;
}

/// Looks on a thread of its own how much memory this process and its children have.
class CMemoryProbe
{
public:
    CMemoryProbe()
    {
        m_thread = std::thread([this] {
            while (!m_bEnd) {
                const qint64 nHost = ShareOf(::getpid());
                qint64 nWorkers = 0;
                for (const pid_t nChild : ChildrenOf(::getpid()))
                    nWorkers += ShareOf(nChild);
                if (nHost + nWorkers > m_nHost + m_nWorkers) {
                    m_nHost = nHost;
                    m_nWorkers = nWorkers;
                }
                QThread::msleep(200);
            }
        });
    }
    ~CMemoryProbe()
    {
        m_bEnd = true;
        m_thread.join();
    }
    /// @{
    /// At the moment when there was most in all.
    double HostMegabytes() const { return static_cast<double>(m_nHost.load()) / kMegabyte; }
    double WorkerMegabytes() const { return static_cast<double>(m_nWorkers.load()) / kMegabyte; }
    /// @}
    void Start() { m_nHost = m_nWorkers = 0; } ///< anew

private:
    std::atomic<bool> m_bEnd{false};
    std::atomic<qint64> m_nHost{0};
    std::atomic<qint64> m_nWorkers{0};
    std::thread m_thread;
};

struct SFigures {
    double dblFirstMs = 0.0;
    double dblAllMs = 0.0;
    double dblHost = 0.0; ///< megabytes
    double dblWorkers = 0.0;
    double dblOpenPause = 0.0;
    double dblPagePause = 0.0;
    double dblClosePause = 0.0;
    double dblOpenWork = 0.0;
    double dblPageWork = 0.0;
    double dblCloseWork = 0.0;
};

/// The centre in a window.
class CBench
{
public:
    explicit CBench(bool bDeferred) : m_bDeferred(bDeferred)
    {
        m_window.setCentralWidget(m_pView);
        m_window.resize(1270, 900);
        m_center = std::make_unique<CCenterCtrl>(&m_model, m_pView, nullptr, nullptr, nullptr);
        SCenterOptions sOptions;
        sOptions.bDeferredPages = bDeferred;
        sOptions.bBackground = bDeferred;
        m_center->SetOptions(sOptions);
        m_window.show();
        const auto item = CMVCManager::FindFirst([](const SMVC& each) {
            return each.pView && each.pView->windowTitle() == QLatin1String("Image View [0]");
        });
        m_pCtrl = dynamic_cast<CImageViewerCtrl*>(item->pCtrl);
        Settle();
    }

    SFigures Measure(const QString& strFile, int nPages)
    {
        CImageView2DModel* pModel = m_pCtrl->Get2DCtrl()->GetImageModel();
        int nCame = 0;
        QObject::connect(pModel, &CImageView2DModel::signal_PixelsCame, &m_window, [&] { ++nCame; });
        SFigures figures;
        QElapsedTimer clock;
        m_memory.Start();
        m_probe.Start();
        clock.start();
        m_pCtrl->LoadFile(strFile);
        Until([&] { return pModel->GetCurrentImage() && pModel->GetCurrentImage()->HasPixels(); });
        QApplication::processEvents(); // it is painted
        figures.dblFirstMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        Until([&] { return !m_bDeferred || nCame >= nPages; });
        figures.dblAllMs = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        Settle();
        figures.dblOpenPause = m_probe.LongestMs();
        figures.dblOpenWork = m_probe.MostWorkMs();
        m_probe.Start();
        for (int i = 0; i < nPages; ++i) {
            pModel->SetCurrentIndex(i * 7 % nPages);
            QApplication::processEvents();
            if (i % 10 == 0)
                Until([&] { return pModel->GetCurrentImage()->HasPixels(); });
        }
        Settle();
        figures.dblPagePause = m_probe.LongestMs();
        figures.dblPageWork = m_probe.MostWorkMs();
        m_probe.Start();
        pModel->Clear();
        Settle();
        figures.dblClosePause = m_probe.LongestMs();
        figures.dblCloseWork = m_probe.MostWorkMs();
        figures.dblHost = m_memory.HostMegabytes();
        figures.dblWorkers = m_memory.WorkerMegabytes();
        return figures;
    }

private:
    static void Until(const std::function<bool()>& isDone)
    {
        while (!isDone())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    static void Settle()
    {
        for (int nTurns = 0; nTurns < 200; ++nTurns)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    const bool m_bDeferred;
    QMainWindow m_window;
    CCenterModel m_model;
    CCenterView* m_pView = new CCenterView(&m_model, &m_window);
    std::unique_ptr<CCenterCtrl> m_center;
    CImageViewerCtrl* m_pCtrl = nullptr;
    CPauseProbe m_probe;
    CMemoryProbe m_memory;
};

/// Poppler's own time for the first page, with the opening of the document.
double PopplerMs(const QByteArray& pdf)
{
    QElapsedTimer clock;
    clock.start();
    const std::unique_ptr<Poppler::Document> pDocument(Poppler::Document::loadFromData(pdf));
    pDocument->setRenderHint(Poppler::Document::Antialiasing);
    pDocument->setRenderHint(Poppler::Document::TextAntialiasing);
    const std::unique_ptr<Poppler::Page> pPage(pDocument->page(0));
    const QImage image = pPage->renderToImage(kDpi, kDpi);
    return image.isNull() ? 0.0 : static_cast<double>(clock.nsecsElapsed()) / 1e6;
}
} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    const int nPages = argc > 1 ? std::max(1, std::atoi(argv[1])) : 300;
    const QTemporaryDir folder;
    const QByteArray pdf = Document(nPages);
    QFile file(folder.filePath(QStringLiteral("a.pdf")));
    if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size() || !file.flush()) {
        std::fputs("The document cannot be made.\n", stderr);
        return 1;
    }
    const SFigures on = CBench(true).Measure(file.fileName(), nPages);
    const SFigures off = CBench(false).Measure(file.fileName(), nPages);
    const double dblPoppler = PopplerMs(pdf);
    const double dblFirstLimit = 1.5 * dblPoppler + 100.0;
    const double dblMemoryLimit = static_cast<double>(CPageMemory::kDefaultLimit) / kMegabyte + 150.0;
    constexpr double kShare = 0.65;
    constexpr double kPause = 50.0;
    std::printf("%d pages; poppler needs %.0f ms for the first\n%-32s %10s %10s %10s\n", nPages, dblPoppler,
                "", "off", "on", "at most");
    bool bGood = true;
    const auto row = [&bGood](const char* pTitle, double dblOff, double dblOn, double dblMost) {
        std::printf("%-32s %10.1f %10.1f %10.1f\n", pTitle, dblOff, dblOn, dblMost);
        bGood = bGood && dblOn <= dblMost;
    };
    row("first page on the screen, ms", off.dblFirstMs, on.dblFirstMs, dblFirstLimit);
    row("all thumbnails, ms", off.dblAllMs, on.dblAllMs, kShare * off.dblAllMs);
    row("memory of host and workers, MB", off.dblHost + off.dblWorkers, on.dblHost + on.dblWorkers,
        dblMemoryLimit);
    row("  of the workers alone, MB", off.dblWorkers, on.dblWorkers, dblMemoryLimit);
    row("longest pause: opening, ms", off.dblOpenPause, on.dblOpenPause, kPause);
    row("  its work for the processor, ms", off.dblOpenWork, on.dblOpenWork, kPause);
    row("longest pause: paging, ms", off.dblPagePause, on.dblPagePause, kPause);
    row("  its work for the processor, ms", off.dblPageWork, on.dblPageWork, kPause);
    row("longest pause: closing, ms", off.dblClosePause, on.dblClosePause, kPause);
    row("  its work for the processor, ms", off.dblCloseWork, on.dblCloseWork, kPause);
    return bGood ? 0 : 1;
}

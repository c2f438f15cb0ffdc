// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What the core does when memory runs out: every allocation of an operation is made to fail in turn, with all
// that follow it. The operation says that it failed, and what it was to change is as it was. Only what the
// core and the standard library allocate fails: Qt does not survive that itself.
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/image/CImage.h>

#include <QDir>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <link.h>
#include <new>
#include <utility>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::EImageType;
using Vantor::Algorithms::ERegionMode;
using Vantor::Algorithms::ERotationMode;
using namespace Vantor::Geometry;

namespace
{
constexpr long kUnlimited = -1;
constexpr int kMaxAllocations = 5000;
long g_nLeft = kUnlimited; ///< allocations that still succeed; one thread only

struct SRange {
    std::uintptr_t nBegin;
    std::uintptr_t nEnd;
};
constexpr int kLibraries = 2;
SRange g_libraries[kLibraries];

/// Notes where the code of the core and of the standard library lies.
int NoteLibrary(dl_phdr_info* pInfo, std::size_t, void* pCount)
{
    if (!std::strstr(pInfo->dlpi_name, "libVantor.so") && !std::strstr(pInfo->dlpi_name, "libstdc++.so"))
        return 0;
    for (int i = 0; i < pInfo->dlpi_phnum; ++i) {
        const auto& segment = pInfo->dlpi_phdr[i];
        if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) != 0)
            g_libraries[(*static_cast<int*>(pCount))++] = {
                pInfo->dlpi_addr + segment.p_vaddr, pInfo->dlpi_addr + segment.p_vaddr + segment.p_memsz};
    }
    return *static_cast<int*>(pCount) == kLibraries ? 1 : 0;
}

bool MayAllocate(const void* pCaller)
{
    if (g_nLeft == kUnlimited)
        return true;
    const auto nCaller = reinterpret_cast<std::uintptr_t>(pCaller);
    const auto isIn = [nCaller](const SRange& range) {
        return nCaller >= range.nBegin && nCaller < range.nEnd;
    };
    if (std::none_of(std::begin(g_libraries), std::end(g_libraries), isIn))
        return true;
    if (g_nLeft > 0)
        --g_nLeft;
    return g_nLeft != 0;
}

void* Allocate(std::size_t nBytes, const void* pCaller)
{
    void* p = MayAllocate(pCaller) ? std::malloc(nBytes > 0 ? nBytes : 1) : nullptr;
    if (!p)
        throw std::bad_alloc();
    return p;
}

/// While it lives, only so many allocations less one succeed, then none.
class CScarceMemory
{
public:
    explicit CScarceMemory(long nAllocations) { g_nLeft = nAllocations; }
    ~CScarceMemory() { g_nLeft = kUnlimited; }
    static bool RanOut() { return g_nLeft == 0; }
};

/// While it lives there is memory again: to look at what happened in between.
class CPause
{
public:
    CPause() : m_nLeft(std::exchange(g_nLeft, kUnlimited)) {}
    ~CPause() { g_nLeft = m_nLeft; }

private:
    long m_nLeft;
};
} // namespace

void* operator new(std::size_t nBytes)
{
    return Allocate(nBytes, __builtin_return_address(0));
}
void* operator new[](std::size_t nBytes)
{
    return Allocate(nBytes, __builtin_return_address(0));
}
void operator delete(void* p) noexcept
{
    std::free(p);
}
void operator delete[](void* p) noexcept
{
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept
{
    std::free(p);
}
extern "C" void* aligned_alloc(std::size_t nAlignment, std::size_t nBytes) noexcept
{
    void* p = nullptr;
    return MayAllocate(__builtin_return_address(0)) && posix_memalign(&p, nAlignment, nBytes) == 0 ? p
                                                                                                   : nullptr;
}

namespace
{
using Operation = std::function<int(CImage&)>;

bool IsTestImage(const CImage& image)
{
    const auto model = MakeTestImage(31, 23, 3);
    if (image.GetWidth() != 31 || image.GetHeight() != 23 || image.GetChannel() != 3 ||
        image.GetName() != L"a rather long name of an image")
        return false;
    for (int y = 0; y < 23; ++y)
        if (std::memcmp(image.GetRows()[y], model->GetRows()[y], 31 * 3) != 0)
            return false;
    return true;
}

/// Tries the operation on a test image with 1, 2, 3, ... allocations until it has enough of them.
/// @param nMet  receives how many allocations were seen to fail
QString TryAll(const Operation& operation, int& nMet)
{
    operation(*MakeTestImage(31, 23, 3)); // what is made once in a process
    for (nMet = 0; nMet < kMaxAllocations; ++nMet) {
        const auto image = MakeTestImage(31, 23, 3);
        image->SetName(L"a rather long name of an image");
        int nResult = -1;
        bool bRanOut = false;
        bool bThrown = false;
        try {
            const CScarceMemory scarce(nMet + 1);
            nResult = operation(*image);
            bRanOut = CScarceMemory::RanOut();
        } catch (const std::bad_alloc&) {
            bThrown = true;
        }
        if (bThrown)
            return QStringLiteral("an exception came out, allocation %1").arg(nMet);
        if (!bRanOut)
            return nResult == 0 ? QString() : QStringLiteral("it failed with memory enough");
        if (nResult != 0 && !IsTestImage(*image))
            return QStringLiteral("the image was changed, allocation %1").arg(nMet);
    }
    return QStringLiteral("it never ends");
}

std::shared_ptr<CPolygon> Triangle()
{
    CPointList points;
    for (const auto& [x, y] : {std::pair(2.0, 3.0), {28.0, 5.0}, {14.0, 20.0}})
        points.Add(CPoint<double>(x, y));
    auto polygon = std::make_shared<CPolygon>();
    polygon->SetPoints(points);
    return polygon;
}
} // namespace

class tst_NoMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        int nFound = 0;
        dl_iterate_phdr(NoteLibrary, &nFound);
        QCOMPARE(nFound, kLibraries);
    }

    void anImageIsCreatedOrStaysAsItWas()
    {
        int nMet = 0;
        QCOMPARE(TryAll([](CImage& image) { return image.Create(40, 30, 4, 8, EImageType::Interleaved, 4); },
                        nMet),
                 QString());
        QVERIFY(nMet >= 2); // the record, its pixels
    }

    void anImageIsCopiedOrStaysAsItWasAndSaysWhy()
    {
        const auto source = MakeTestImage(40, 30, 4);
        source->SetName(L"another name that is not short");
        int nMet = 0;
        bool bSilent = false;
        QCOMPARE(TryAll(
                     [&](CImage& image) {
                         const int nResult = image.CopyFrom(source.get());
                         const CPause pause;
                         bSilent |= nResult != 0 && image.GetFailureReason().empty();
                         return nResult;
                     },
                     nMet),
                 QString());
        QVERIFY(!bSilent);
        QVERIFY(nMet >= 3);
    }

    void anImageIsTurnedOrStaysAsItWas_data()
    {
        QTest::addColumn<double>("angle");
        QTest::addColumn<bool>("grow");
        QTest::newRow("a quarter, growing") << 1.5707963267948966 << true;
        QTest::newRow("a quarter, in place") << 1.5707963267948966 << false;
        QTest::newRow("another angle, growing") << 0.3 << true;
    }

    void anImageIsTurnedOrStaysAsItWas()
    {
        QFETCH(double, angle);
        QFETCH(bool, grow);
        int nMet = 0;
        QCOMPARE(TryAll(
                     [&](CImage& image) {
                         return image.Rotate(CPoint<double>(10, 10), angle, 0.0,
                                             grow ? ERotationMode::GrowCanvas : ERotationMode::KeepCanvas);
                     },
                     nMet),
                 QString());
        QVERIFY(nMet >= 2);
    }

    void anImageIsFilteredOrStaysAsItWas_data()
    {
        QTest::addColumn<int>("radius");
        QTest::addColumn<double>("tolerance");
        for (const int nRadius : {0, 1, 2, 3}) // 0: the edges
            for (const double dblTolerance : {0.0, 2.0, -2.0})
                QTest::addRow("radius %d, tolerance %g", nRadius, dblTolerance) << nRadius << dblTolerance;
    }

    void anImageIsFilteredOrStaysAsItWas()
    {
        QFETCH(int, radius);
        QFETCH(double, tolerance);
        const auto region = Triangle();
        int nMet = 0;
        QCOMPARE(TryAll(
                     [&](CImage& image) {
                         return radius == 0 ? image.SobelXY(region.get(), ERegionMode::Inside, tolerance)
                                            : image.MedianFilter(radius, radius, region.get(),
                                                                 ERegionMode::Outside, tolerance);
                     },
                     nMet),
                 QString());
        QVERIFY(nMet >= 2);
    }

    void aFileIsReadOrTheImageStaysAsItWas_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const char* pSuffix : {"bmp", "png", "jpg", "gif", "tif"})
            QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
    }

    void aFileIsReadOrTheImageStaysAsItWas()
    {
        QFETCH(QString, suffix);
        const QTemporaryDir folder;
        const std::wstring path = folder.filePath(QStringLiteral("a.") + suffix).toStdWString();
        QCOMPARE(MakeTestImage(20, 10, 3)->Save(path), 0);
        int nMet = 0;
        QCOMPARE(TryAll([&](CImage& image) { return image.Load(path); }, nMet), QString());
        QVERIFY(nMet >= 3);
    }

    void aFileIsWrittenOrNoneIsThere_data() { aFileIsReadOrTheImageStaysAsItWas_data(); }

    void aFileIsWrittenOrNoneIsThere()
    {
        QFETCH(QString, suffix);
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.") + suffix);
        const std::wstring strPath = path.toStdWString();
        int nMet = 0;
        bool bLeft = false;
        QCOMPARE(TryAll(
                     [&](CImage& image) {
                         const int nResult = image.Save(strPath);
                         const CPause pause;
                         const QDir dir(folder.path());
                         bLeft |= nResult != 0 &&
                                  !dir.isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
                         QFile::remove(path);
                         return nResult;
                     },
                     nMet),
                 QString());
        QVERIFY(!bLeft);
        QVERIFY(nMet >= 2);
    }
};

VANTOR_CORE_TEST_MAIN(tst_NoMemory)
#include "tst_NoMemory.moc"

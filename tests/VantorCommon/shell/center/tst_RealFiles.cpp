// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/Centre.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include "tests/Vantor/image/ExpectedFiles.h"

#include <Vantor/image/CImage.h>

#include <QApplication>
#include <QDirIterator>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPdfWriter>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <ctime>

using Vantor::Algorithms::CImage;

namespace
{
/// Of the processor, for others may be at work; with the sanitizers or with coverage all is several times
/// slower.
#if defined(__SANITIZE_ADDRESS__) || defined(VANTOR_COVERAGE)
constexpr int kMaxSecondsForABrokenFile = 10;
#else
constexpr int kMaxSecondsForABrokenFile = 2;
#endif

struct SDocument {
    const char* pName;
    const char* pPassword; // UTF-8; null: opens without asking
    int nPages;
    int nWidth; // of the first page in pixels, at 144 dots per inch
    int nHeight;
};

// Letter is 612 x 792 points, so 1224 x 1584 pixels.
const SDocument kDocuments[] = {
    {"11-pages.pdf", nullptr, 11, 1224, 1584},
    {"20-pages.pdf", "user", 20, 1224, 1584},
    {"V4-aes.pdf", nullptr, 30, 1224, 1584},
    {"annotations-rotated-180.pdf", nullptr, 1, 1224, 1584},
    {"annotations-rotated-270.pdf", nullptr, 1, 1584, 1224},
    {"annotations-rotated-90.pdf", nullptr, 1, 1584, 1224},
    {"enc-R2,V1,U=view,O=master.pdf", "view", 30, 1224, 1584},
    {"enc-R3,V2,U=view,O=master.pdf", "view", 30, 1224, 1584},
    {"enc-R3,V2.pdf", nullptr, 30, 1224, 1584},
    {"enc-XI-R6,V5,U=view,O=master.pdf", "view", 30, 1224, 1584},
    {"inherited-rotate.pdf", nullptr, 1, 1584, 1224},
    {"pdfium_encrypted_hello_world_r2.pdf", "h\xc3\xb4tel", 1, 400, 400},
    {"pdfium_encrypted_hello_world_r6.pdf", "h\xc3\xb4tel", 1, 400, 400},
    {"pdfium_hello_world.pdf", nullptr, 1, 400, 400},
    {"pdfium_hello_world_2_pages.pdf", nullptr, 2, 400, 400},
    {"pdfium_many_rectangles.pdf", nullptr, 1, 400, 600},
    {"pdfium_rectangles_multi_pages.pdf", nullptr, 5, 400, 500},
    {"pdfium_rotated_image.pdf", nullptr, 1, 400, 400},
    {"pdfium_rotated_text_90.pdf", nullptr, 1, 400, 400},
};

/// What the screen shows of the 2D view of viewer 0.
QImage Screen(const SCentre& c)
{
    return c.View2D(0)->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// Mean difference of the samples of two pictures of the same size.
double MeanDifference(const QImage& a, const QImage& b)
{
    double dblSum = 0.0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y);
            const QRgb q = b.pixel(x, y);
            dblSum +=
                std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
    return dblSum / (3.0 * a.width() * a.height());
}

DialogDriver::Step TypePassword(const QString& strPassword)
{
    return [strPassword](QDialog* pDialog) {
        QVERIFY(qobject_cast<QInputDialog*>(pDialog));
        auto* pEdit = pDialog->findChild<QLineEdit*>();
        QCOMPARE(pEdit->echoMode(), QLineEdit::Password);
        pEdit->insert(strPassword); // QTest types ASCII only
        QTest::keyClick(pEdit, Qt::Key_Return);
    };
}

/// The lines that tell of a failure.
QStringList Errors(LogRecorder& log)
{
    return log.Take().filter(QStringLiteral("Cannot load"));
}

QStringList FilesBelow(const QString& strFolder)
{
    QStringList lstFiles;
    QDirIterator it(TestDataPath(strFolder), QDir::Files);
    while (it.hasNext())
        lstFiles << it.next();
    lstFiles.sort();
    return lstFiles;
}

QtMessageHandler g_pPreviousHandler = nullptr;

/// What the decoders say about a broken file is no warning about us.
void DropDecoderWarnings(QtMsgType eType, const QMessageLogContext& context, const QString& strText)
{
    if (!strText.startsWith(QStringLiteral("libpng warning")) &&
        !strText.startsWith(QStringLiteral("Corrupt JPEG")))
        g_pPreviousHandler(eType, context, strText);
}

void Click(const SCentre& c, const char* pIcon)
{
    QTest::mouseClick(c.Parts(0).Button(QString::fromLatin1(pIcon)), Qt::LeftButton);
}
} // namespace

/// Real files, opened in a window that is shown.
class tst_RealFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTableNamesEveryImageAndEveryDocument()
    {
        int nImages = 0;
        for (const char* pFolder : {"jpeg", "png", "bmp", "tiff", "gif"})
            nImages += FilesBelow(QString::fromLatin1(pFolder)).size();
        QCOMPARE(int(std::size(kExpectedFiles)), nImages);
        QCOMPARE(int(std::size(kDocuments)), FilesBelow(QStringLiteral("pdf")).size());
    }

    void everyImageOpensWithItsSizeAndChannelsOrLeavesEverythingAsItWas()
    {
        SCentre c;
        QVERIFY(c.Show());
        int nOpened = 0;
        QStringList lstRefused;
        for (const SExpectedFile& file : kExpectedFiles) {
            const QString strName = QString::fromLatin1(file.pName);
            const QString strPath = TestDataPath(strName);
            const unsigned int nBefore = c.Ctrl(0)->GetImageID();
            const QString strTitle = c.Parts(0).Title()->text();
            LogRecorder log;
            c.pCtrl->OpenFile(strPath);
            if (c.Ctrl(0)->GetImageID() == nBefore) {
                QVERIFY2(strName.contains(QStringLiteral("/q_")), file.pName);
                QCOMPARE(c.Parts(0).Title()->text(), strTitle);
                QCOMPARE(Errors(log), QStringList(QStringLiteral("3:Cannot load image ") + strPath));
                lstRefused << strName;
                continue;
            }
            ++nOpened;
            QCOMPARE(Errors(log), QStringList());
            const QString strExpected =
                QStringLiteral("[View-0][%1x%2x%3x8]").arg(file.nWidth).arg(file.nHeight).arg(file.nChannels);
            QVERIFY2(c.Parts(0).Title()->text() == strExpected,
                     qPrintable(strName + QLatin1Char(' ') + c.Parts(0).Title()->text()));
            QCOMPARE(c.Parts(0).List()->model()->rowCount(), 1);
            QCOMPARE(c.Parts(0).Text(0), QStringLiteral("1. ") + QFileInfo(strName).fileName());
            QVERIFY(!Screen(c).isNull());
        }
        qInfo("%d images opened, %d refused: %s", nOpened, lstRefused.size(),
              qPrintable(lstRefused.join(QStringLiteral(", "))));
        QVERIFY(nOpened > 0);
    }

    void everyDocumentOpensWithItsPages()
    {
        SCentre c;
        QVERIFY(c.Show());
        int nPages = 0;
        int nAsked = 0;
        for (const SDocument& document : kDocuments) {
            LogRecorder log;
            std::vector<DialogDriver::Step> vctSteps;
            if (document.pPassword)
                vctSteps.push_back(TypePassword(QString::fromUtf8(document.pPassword)));
            const DialogDriver driver(vctSteps);
            c.pCtrl->slot_OpenFilePath(TestDataPath(QStringLiteral("pdf/")) +
                                       QString::fromUtf8(document.pName));
            QVERIFY2(driver.Count() == (document.pPassword ? 1 : 0), document.pName);
            QCOMPARE(Errors(log), QStringList());
            nAsked += driver.Count();
            const int nRows = c.Parts(0).List()->model()->rowCount();
            QVERIFY2(nRows == document.nPages, document.pName);
            nPages += nRows;
            const auto pImage = c.Ctrl(0)->GetImage();
            QCOMPARE(pImage->GetChannel(), 3);
            QCOMPARE(QSize(pImage->GetWidth(), pImage->GetHeight()),
                     QSize(document.nWidth, document.nHeight));
            QCOMPARE(QString::fromStdWString(pImage->GetName()), QString::fromUtf8(document.pName));
        }
        qInfo("%d documents opened, %d pages, %d passwords asked for", int(std::size(kDocuments)), nPages,
              nAsked);
    }

    void aWrongPasswordLeavesEverythingAsItWas()
    {
        SCentre c;
        QVERIFY(c.Show());
        SCenterOptions options;
        options.bKeepOnFailedLoad = true;
        c.pCtrl->SetOptions(options);
        c.pCtrl->OpenFile(TestDataPath(QStringLiteral("png/bricks-color.png")));
        const auto pBefore = c.Ctrl(0)->GetImage();
        const QString strPath = TestDataPath(QStringLiteral("pdf/20-pages.pdf"));
        LogRecorder log;
        {
            const DialogDriver driver({TypePassword(QStringLiteral("wrong")), [](QDialog* pDialog) {
                                           QVERIFY(qobject_cast<QMessageBox*>(pDialog));
                                           pDialog->accept();
                                       }});
            c.pCtrl->OpenFile(strPath);
            QTRY_COMPARE(driver.Count(), 2);
        }
        const QString strLine = QStringLiteral("3:Cannot load pdf file ") + strPath;
        QCOMPARE(Errors(log), QStringList(strLine));
        QCOMPARE(c.Ctrl(0)->GetImage(), pBefore);
        const DialogDriver driver({[](QDialog* pDialog) { QTest::keyClick(pDialog, Qt::Key_Escape); }});
        c.pCtrl->OpenFile(strPath);
        QCOMPARE(driver.Count(), 1);
        QCOMPARE(Errors(log), QStringList(strLine));
        QCOMPARE(c.Ctrl(0)->GetImage(), pBefore);
    }

    void theEightOrientationsLookTheSameOnTheScreen()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->OpenFile(TestDataPath(QStringLiteral("jpeg/hopper.jpg")));
        const QImage upright = Screen(c);
        double dblWorst = 0.0;
        for (int i = 2; i <= 8; ++i) {
            c.pCtrl->OpenFile(TestDataPath(QStringLiteral("jpeg/hopper_orientation_%1.jpg").arg(i)));
            const QImage turned = Screen(c);
            QCOMPARE(turned.size(), upright.size());
            const double dblDifference = MeanDifference(turned, upright);
            dblWorst = std::max(dblWorst, dblDifference);
            // Encoded anew after turning: equal up to what JPEG loses.
            QVERIFY2(dblDifference < 4.0, qPrintable(QStringLiteral("%1: %2").arg(i).arg(dblDifference)));
            // The same picture upside down is far off.
            QVERIFY(MeanDifference(turned.mirrored(), upright) > 10.0);
        }
        qInfo("largest mean difference of the orientations: %.3f of 255", dblWorst);
    }

    void aDocumentIsBrowsedByItsButtons_data()
    {
        QTest::addColumn<QString>("strFile");
        QTest::addColumn<int>("nPages");
        QTest::newRow("11 pages") << TestDataPath(QStringLiteral("pdf/11-pages.pdf")) << 11;
        QTest::newRow("30 pages") << TestDataPath(QStringLiteral("pdf/V4-aes.pdf")) << 30;
        QTest::newRow("30 pages written here") << QString() << 30;
    }
    void aDocumentIsBrowsedByItsButtons()
    {
        QFETCH(QString, strFile);
        QFETCH(int, nPages);
        const QTemporaryDir dir;
        const bool bOwn = strFile.isEmpty();
        if (bOwn) {
            strFile = dir.filePath(QStringLiteral("own.pdf"));
            WriteDocument(strFile, nPages);
        }
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->OpenFile(strFile);
        QCOMPARE(c.Parts(0).List()->model()->rowCount(), nPages);
        std::vector<unsigned int> vctIDs{c.Ctrl(0)->GetImageID()};
        for (int i = 1; i < nPages; ++i) {
            Click(c, "next.png");
            QCOMPARE(c.Parts(0).List()->currentIndex().row(), i);
            QVERIFY(c.Ctrl(0)->GetImageID() != vctIDs.back());
            vctIDs.push_back(c.Ctrl(0)->GetImageID());
            QCOMPARE(c.View2D(0)->GetImageUID(), vctIDs.back());
            if (bOwn)
                QCOMPARE(GreyOf(*c.Ctrl(0)->GetImage()), i * 8);
        }
        Click(c, "next.png");
        QCOMPARE(c.Ctrl(0)->GetImageID(), vctIDs.back());
        for (int i = nPages - 2; i >= 0; --i) {
            Click(c, "previous.png");
            QCOMPARE(c.Ctrl(0)->GetImageID(), vctIDs[static_cast<std::size_t>(i)]);
        }
        Click(c, "previous.png");
        QCOMPARE(c.Ctrl(0)->GetImageID(), vctIDs.front());
    }

    void nothingBrokenEndsTheProcessOrHoldsItUp()
    {
        SCentre c;
        QVERIFY(c.Show());
        c.pCtrl->OpenFile(TestDataPath(QStringLiteral("png/bricks-color.png")));
        const QStringList lstFiles = FilesBelow(QStringLiteral("broken"));
        QVERIFY(!lstFiles.isEmpty());
        const DialogDriver driver({});
        g_pPreviousHandler = qInstallMessageHandler(DropDecoderWarnings);
        const auto restore = qScopeGuard([] { qInstallMessageHandler(g_pPreviousHandler); });
        int nOpened = 0;
        qint64 nSlowest = 0;
        QString strSlowest;
        for (const QString& strFile : lstFiles) {
            const unsigned int nBefore = c.Ctrl(0)->GetImageID();
            const int nRows = c.Parts(0).List()->model()->rowCount();
            LogRecorder log;
            const std::clock_t start = std::clock();
            c.pCtrl->OpenFile(strFile);
            QApplication::processEvents();
            const qint64 nTime = (std::clock() - start) * 1000 / CLOCKS_PER_SEC;
            if (nTime > nSlowest) {
                nSlowest = nTime;
                strSlowest = QFileInfo(strFile).fileName();
            }
            QVERIFY2(nTime < kMaxSecondsForABrokenFile * 1000, qPrintable(strFile));
            if (c.Ctrl(0)->GetImageID() != nBefore) {
                ++nOpened;
                continue;
            }
            QCOMPARE(c.Parts(0).List()->model()->rowCount(), nRows);
            const QStringList lstErrors = Errors(log);
            QVERIFY2(lstErrors.size() == 1 && lstErrors.front().endsWith(strFile), qPrintable(strFile));
        }
        qInfo("%d broken files, %d show something; slowest %lld ms: %s", lstFiles.size(), nOpened, nSlowest,
              qPrintable(strSlowest));
    }

private:
    /// Pages of a flat grey that grows by 8 from page to page.
    static void WriteDocument(const QString& strFile, int nPages)
    {
        QPdfWriter writer(strFile);
        writer.setPageSize(QPageSize(QSizeF(100, 60), QPageSize::Point));
        writer.setPageMargins(QMarginsF());
        QPainter painter(&writer);
        for (int i = 0; i < nPages; ++i) {
            if (i > 0)
                writer.newPage();
            painter.fillRect(QRect(0, 0, writer.width(), writer.height()), QColor(i * 8, i * 8, i * 8));
        }
    }

    static int GreyOf(const CImage& image)
    {
        return image.GetPixel(image.GetWidth() / 2, image.GetHeight() / 2)[0];
    }
};

VANTOR_TEST_MAIN(tst_RealFiles)
#include "tst_RealFiles.moc"

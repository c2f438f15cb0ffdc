// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CDetailsDlg.h"
#include "FileManager.h"
#include "WorkSupport.h"

#include <Vantor/image/CImage.h>
#include <Vantor/image/SImageMetadata.h>

#include <QClipboard>
#include <QDBusConnection>
#include <QDesktopServices>
#include <QProcess>
#include <QPushButton>

namespace
{
/// The desktop's program for files, as far as it is asked here.
class CFileManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    CFileManager()
    {
        auto bus = QDBusConnection::sessionBus();
        bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.FileManager1"));
    }
    ~CFileManager() override
    {
        auto bus = QDBusConnection::sessionBus();
        bus.unregisterService(QStringLiteral("org.freedesktop.FileManager1"));
        bus.unregisterObject(QStringLiteral("/org/freedesktop/FileManager1"));
    }

    QStringList lstShown;

public Q_SLOTS:
    void ShowItems(const QStringList& lstUris, const QString&) { lstShown += lstUris; }
};

/// What the desktop is asked to open.
class COpened : public QObject
{
    Q_OBJECT

public:
    COpened() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "slot_Open"); }
    ~COpened() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    QStringList lstPaths;

public Q_SLOTS:
    void slot_Open(const QUrl& url) { lstPaths << url.toLocalFile(); }
};

QString ValueOf(const QList<SFact>& lstFacts, const char* pName)
{
    for (const SFact& fact : lstFacts)
        if (fact.strName == QLatin1String(pName))
            return fact.strValue;
    return QStringLiteral("(none)");
}

CDetailsDlg* Details(const Host& host)
{
    host.Entry("File", "Details...")->trigger();
    return host.window.findChild<CDetailsDlg*>();
}

QPushButton* Button(const CDetailsDlg* pDialog, const char* pText)
{
    for (QPushButton* pButton : pDialog->findChildren<QPushButton*>())
        if (pButton->text().remove(QLatin1Char('&')) == QLatin1String(pText))
            return pButton;
    return nullptr;
}
} // namespace

class tst_CDetailsDlg : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void aFileIsToldByNameFolderSizeDateAndFormat()
    {
        const Pictures files;
        const QString strPath = files.Add(QStringLiteral("a b.jpg")); // a PNG by its content
        const auto lstFacts = ImageFacts::OfFile(strPath);
        QCOMPARE(ValueOf(lstFacts, "Name"), QStringLiteral("a b.jpg"));
        QCOMPARE(ValueOf(lstFacts, "Folder"), QFileInfo(strPath).absolutePath());
        QVERIFY(ValueOf(lstFacts, "File size").contains(QString::number(QFileInfo(strPath).size())));
        QVERIFY(ValueOf(lstFacts, "Changed").contains(QString::number(QDate::currentDate().year())));
        QVERIFY(ValueOf(lstFacts, "Format").contains(QLatin1String("PNG")));
        QCOMPARE(ImageFacts::OfFile(QStringLiteral("/nowhere/x.png")).size(), 2);
    }

    void anImageIsToldByItsPixels()
    {
        Host host;
        QVERIFY(host.Show({TestDataPath(QStringLiteral("png/bricks-color.png"))}));
        const auto pImage = CtrlOf(host, 0)->GetCurrentImgage();
        const auto lstFacts = ImageFacts::OfImage(*pImage);
        QCOMPARE(ValueOf(lstFacts, "Size"),
                 QStringLiteral("%1 x %2 pixels").arg(pImage->GetWidth()).arg(pImage->GetHeight()));
        QCOMPARE(ValueOf(lstFacts, "Channels"), QStringLiteral("3 of 8 bits"));
        QCOMPARE(ValueOf(lstFacts, "Page size"), QStringLiteral("(none)"));
    }

    void whatTheFileSaysBesideThePixelsIsTold()
    {
        Vantor::Algorithms::CImage image;
        QCOMPARE(image.Create(508, 100, 1, 8, Vantor::Algorithms::EImageType::Interleaved, 1), 0);
        Vantor::Algorithms::SImageMetadata metadata;
        metadata.resolutionX = metadata.resolutionY = 100.0;
        metadata.resolutionUnit = Vantor::Algorithms::EResolutionUnit::Centimetre;
        metadata.profile.assign(200, 7);
        metadata.texts.push_back({"Author", "A.\nB."});
        QCOMPARE(image.SetMetadata(metadata), 0);
        const auto lstFacts = ImageFacts::OfImage(image);
        QCOMPARE(ValueOf(lstFacts, "Resolution"), QStringLiteral("254.0 dots per inch"));
        QCOMPARE(ValueOf(lstFacts, "Page size"), QStringLiteral("50.8 x 10.0 mm"));
        QCOMPARE(ValueOf(lstFacts, "Color profile"), QStringLiteral("In the file, not applied"));
        QCOMPARE(ValueOf(lstFacts, "Author"), QStringLiteral("A. B."));
    }

    void aPageIsToldByItsSizeOnPaper()
    {
        Host host;
        QVERIFY(host.Show({TestDataPath(QStringLiteral("pdf/pdfium_hello_world.pdf"))}));
        const auto lstFacts = ImageFacts::OfImage(*CtrlOf(host, 0)->GetCurrentImgage());
        // 200 x 200 points
        QCOMPARE(ValueOf(lstFacts, "Page size"), QStringLiteral("70.6 x 70.6 mm"));
        QCOMPARE(ValueOf(lstFacts, "Resolution"), QStringLiteral("144.0 dots per inch"));
    }

    void thePathIsCopied()
    {
        const Pictures files;
        const QString strPath = files.Add(QStringLiteral("x.png"));
        Host host;
        QVERIFY(host.Show({strPath}));
        const auto* pDialog = Details(host);
        QVERIFY(pDialog);
        Button(pDialog, "Copy Path")->click();
        QCOMPARE(QGuiApplication::clipboard()->text(), strPath);
    }

    void anImageWithoutAFileHasNoPath()
    {
        Host host;
        QVERIFY(host.Show());
        QVERIFY(!host.IsEnabled("File", "Details..."));
        QGuiApplication::clipboard()->setImage(QImage(5, 4, QImage::Format_RGB32));
        host.Entry("Edit", "Paste")->trigger();
        const auto* pDialog = Details(host);
        QVERIFY(pDialog);
        QVERIFY(!Button(pDialog, "Copy Path")->isEnabled());
        QVERIFY(!Button(pDialog, "Show in Folder")->isEnabled());
    }

    void theDesktopShowsTheFileInItsFolder()
    {
        const Pictures files;
        const QString strPath = files.Add(QStringLiteral("a #b.png"));
        CFileManager manager;
        const COpened opened;
        Host host;
        QVERIFY(host.Show({strPath}));
        Button(Details(host), "Show in Folder")->click();
        QTRY_COMPARE(manager.lstShown.size(), 1);
        QCOMPARE(QUrl(manager.lstShown[0]).toLocalFile(), strPath);
        QVERIFY(manager.lstShown[0].endsWith(QLatin1String("/a%20%23b.png")));
        QVERIFY(opened.lstPaths.isEmpty());
    }

    void withoutThatTheFolderIsOpened()
    {
        const COpened opened;
        QObject context;
        FileManager::Show(QStringLiteral("/some/folder/x.png"), &context);
        QTRY_COMPARE(opened.lstPaths, QStringList{QStringLiteral("/some/folder")});
    }
};

/// A session bus of its own, before the application connects to it.
int main(int argc, char* argv[])
{
    QProcess bus;
    bus.start(QStringLiteral("dbus-daemon"),
              {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    if (!bus.waitForStarted() || !bus.waitForReadyRead())
        return 1;
    qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    QApplication app(argc, argv);
    int nResult = 1;
    {
        tst_CDetailsDlg test;
        nResult = QTest::qExec(&test, argc, argv);
    }
    bus.kill();
    bus.waitForFinished();
    return nResult;
}
#include "tst_CDetailsDlg.moc"

// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/mvc/CMVCManager.h>

#include <QImage>
#include <QString>
#include <utility>

class tst_ResourcesCommon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The linker leaves out a library of which nothing is used, and its resources with it.
        QVERIFY(CMVCManager::m_vctItems.empty());
    }

    void everyIconIsThereInBothSizesAndDrawn_data()
    {
        QTest::addColumn<QString>("name");
        for (const char* name :
             {"2D",        "3D",    "selection", "move",  "zoomfit", "rotate-left", "rotate-right",
              "previous",  "next",  "capture",   "ruler", "clear",   "add",         "open-folder",
              "save_file", "photo", "pdf",       "close", "copy",    "paste",       "search"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void everyIconIsThereInBothSizesAndDrawn()
    {
        QFETCH(QString, name);
        const QString stem = QStringLiteral(":/Image/") + name;
        for (const auto& [suffix, nSize] : {std::pair("", 24), std::pair("@2x", 48)}) {
            const QImage icon(stem + QString::fromLatin1(suffix) + QStringLiteral(".png"));
            QCOMPARE(icon.size(), QSize(nSize, nSize));
            int nInk = 0;
            for (int y = 0; y < nSize; ++y)
                for (int x = 0; x < nSize; ++x)
                    nInk += qAlpha(icon.pixel(x, y)) > 128 ? 1 : 0;
            // Lines on a clear ground: neither empty nor a filled square.
            QVERIFY(nInk > nSize * nSize / 20);
            QVERIFY(nInk < nSize * nSize * 2 / 3);
        }
    }
};

VANTOR_CORE_TEST_MAIN(tst_ResourcesCommon)
#include "tst_ResourcesCommon.moc"

// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Random editing against a plain second model. VANTOR_UNDO_STEPS and VANTOR_UNDO_SEED choose length and seed.
#include "UndoDriver.h"

#include <tests/support/TestMain.h>

#include <QElapsedTimer>
#include <QTemporaryDir>

using namespace UndoDriver;

class tst_UndoModel : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    QStringList m_files;

private Q_SLOTS:
    void initTestCase()
    {
        const int sizes[][3] = {{200, 150, 3}, {60, 90, 1}, {37, 11, 4}};
        for (const auto& size : sizes) {
            m_files << m_dir.filePath(QString::number(size[0]) + QStringLiteral(".png"));
            const auto pImage = MakeTestImage(size[0], size[1], size[2]);
            QCOMPARE(pImage->Save(m_files.last().toStdWString()), 0);
        }
    }

    void everyStepAgreesWithThePlainModel()
    {
        const int nSteps = FromEnvironment("VANTOR_UNDO_STEPS", 2000);
        const int nSeed = FromEnvironment("VANTOR_UNDO_SEED", kSeed);
        qInfo("seed %d, %d steps", nSeed, nSteps);
        QElapsedTimer timer;
        timer.start();
        Driver driver{unsigned(nSeed), m_files};
        for (int i = 0; i < nSteps; ++i) {
            driver.Step(false);
            const QString strDifference = driver.Compare();
            QVERIFY2(strDifference.isEmpty(),
                     qPrintable(QString::asprintf("seed %d, step %d, ", nSeed, i) + strDifference));
            if (i % 50 == 0)
                driver.Breathe();
        }
        qInfo("%d steps in %.1f s", nSteps, double(timer.elapsed()) / 1000.0);
    }

    void undoBackToTheStartGivesTheStartAndRedoToTheEndGivesTheEnd()
    {
        const int nSeed = FromEnvironment("VANTOR_UNDO_SEED", kSeed);
        qInfo("seed %d", nSeed);
        Driver driver{unsigned(nSeed), m_files};
        const auto vctStartPages = driver.Editor().pages;
        const auto step = [&](int i, auto make) {
            make();
            const QString strDifference = driver.Compare();
            if (i % 50 == 0)
                driver.Breathe();
            return QString::asprintf("seed %d, step %d, ", nSeed, i) + strDifference;
        };
        for (int i = 0; i < 400; ++i) {
            const QString strTold = step(i, [&] { driver.Step(true); });
            QVERIFY2(strTold.endsWith(QLatin1String(", ")), qPrintable(strTold));
        }
        std::vector<std::pair<unsigned int, Shape>> vctEnd;
        for (const auto& pObject : driver.Editor().objects)
            vctEnd.emplace_back(pObject->uid, pObject->shape);
        const auto vctEndPages = driver.Editor().pages;
        for (int i = 0; driver.CanUndo(); ++i) {
            const QString strTold = step(i, [&] { driver.Undo(); });
            QVERIFY2(strTold.endsWith(QLatin1String(", ")), qPrintable(strTold));
        }
        QVERIFY(driver.Editor().objects.empty());
        QCOMPARE(driver.Editor().pages, vctStartPages);
        for (int i = 0; driver.CanRedo(); ++i) {
            const QString strTold = step(i, [&] { driver.Redo(); });
            QVERIFY2(strTold.endsWith(QLatin1String(", ")), qPrintable(strTold));
        }
        QCOMPARE(driver.Editor().pages, vctEndPages);
        QCOMPARE(driver.Editor().objects.size(), vctEnd.size());
        for (std::size_t i = 0; i < vctEnd.size(); ++i) {
            QCOMPARE(driver.Editor().objects[i]->uid, vctEnd[i].first);
            QVERIFY(driver.Editor().objects[i]->shape == vctEnd[i].second);
        }
    }
};

VANTOR_TEST_MAIN(tst_UndoModel)
#include "tst_UndoModel.moc"

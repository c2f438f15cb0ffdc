// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The filters and OpenCV's, where both mean the same, on photographs: byte for byte. Alpha, which only OpenCV
// filters, is left out.
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>

#include <opencv2/imgproc.hpp>

using Vantor::Algorithms::CImage;
using Vantor::Algorithms::ERegionMode;

namespace
{
cv::Mat MatOf(const CImage& image)
{
    cv::Mat mat(image.GetHeight(), image.GetWidth(), CV_8UC(image.GetChannel()));
    for (int y = 0; y < mat.rows; ++y)
        std::memcpy(mat.ptr(y), image.GetRows()[y], std::size_t(mat.cols) * mat.elemSize());
    return mat;
}

/// Empty, or where the first difference is.
QString Difference(const CImage& image, const cv::Mat& mat)
{
    const int nStep = image.GetChannel();
    for (int y = 0; y < mat.rows; ++y)
        for (int i = 0; i < mat.cols * nStep; ++i)
            if (!(nStep == 4 && i % nStep == 3) && image.GetRows()[y][i] != mat.ptr(y)[i])
                return QString::asprintf("(%d, %d)[%d]: %d, not %d", i / nStep, y, i % nStep,
                                         image.GetRows()[y][i], mat.ptr(y)[i]);
    return {};
}

cv::Mat Gradient(const cv::Mat& mat, int dx, int dy)
{
    cv::Mat gradient;
    cv::Sobel(mat, gradient, CV_16S, dx, dy, 3, 1, 0, cv::BORDER_REPLICATE);
    return gradient;
}

cv::Mat Magnitude(const cv::Mat& mat)
{
    const cv::Mat gx = Gradient(mat, 1, 0);
    const cv::Mat gy = Gradient(mat, 0, 1);
    cv::Mat result(mat.size(), mat.type());
    for (int y = 0; y < mat.rows; ++y)
        for (int i = 0; i < mat.cols * mat.channels(); ++i)
            result.ptr(y)[i] = cv::saturate_cast<uchar>(
                std::round(std::hypot(double(gx.ptr<short>(y)[i]), double(gy.ptr<short>(y)[i]))));
    return result;
}
} // namespace

class tst_FiltersOfPhotographs : public QObject
{
    Q_OBJECT

private:
    CImage m_photo;
    CImage m_image;
    cv::Mat m_mat;

    bool Load(const QString& strFile)
    {
        return m_photo.Load(strFile.toStdWString()) == 0 && !(m_mat = MatOf(m_photo)).empty();
    }
    static void AddPhotographs();

private Q_SLOTS:
    void theMedianIsThatOfTheOther_data() { AddPhotographs(); }
    void theMedianIsThatOfTheOther();
    void theGradientsAreThoseOfTheOther_data() { AddPhotographs(); }
    void theGradientsAreThoseOfTheOther();
};

void tst_FiltersOfPhotographs::AddPhotographs()
{
    QTest::addColumn<QString>("file");
    for (const char* pName :
         {"jpeg/harvesters.jpeg", "jpeg/hibiscus.regular.jpeg", "jpeg/hopper.jpg",
          "jpeg/peacock.default.jpeg", "jpeg/peacock.grayscale.jpeg", "png/bricks-color.png",
          "png/bricks-gray.png", "png/hippopotamus.regular.png", "../../app/sample/kodim03.png"})
        QTest::newRow(pName) << TestDataPath(QString::fromLatin1(pName));
}

void tst_FiltersOfPhotographs::theMedianIsThatOfTheOther()
{
    QFETCH(QString, file);
    QVERIFY(Load(file));
    for (const int nRadius : {1, 2, 3, 7}) {
        m_image.CopyFrom(&m_photo);
        QCOMPARE(m_image.MedianFilter(nRadius, nRadius, nullptr, ERegionMode::All, 0.0), 0);
        cv::Mat mat;
        cv::medianBlur(m_mat, mat, 2 * nRadius + 1);
        QCOMPARE(Difference(m_image, mat), QString());
    }
}

void tst_FiltersOfPhotographs::theGradientsAreThoseOfTheOther()
{
    QFETCH(QString, file);
    QVERIFY(Load(file));
    cv::Mat mat;
    m_image.CopyFrom(&m_photo);
    QCOMPARE(m_image.SobelX(nullptr, ERegionMode::All, 0.0), 0);
    cv::convertScaleAbs(Gradient(m_mat, 1, 0), mat);
    QCOMPARE(Difference(m_image, mat), QString());

    m_image.CopyFrom(&m_photo);
    QCOMPARE(m_image.SobelY(nullptr, ERegionMode::All, 0.0), 0);
    cv::convertScaleAbs(Gradient(m_mat, 0, 1), mat);
    QCOMPARE(Difference(m_image, mat), QString());

    m_image.CopyFrom(&m_photo);
    QCOMPARE(m_image.SobelXY(nullptr, ERegionMode::All, 0.0), 0);
    QCOMPARE(Difference(m_image, Magnitude(m_mat)), QString());
}

VANTOR_CORE_TEST_MAIN(tst_FiltersOfPhotographs)
#include "tst_FiltersOfPhotographs.moc"

// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// annotation_files convert FROM TO FORMAT [WIDTH HEIGHT IMAGE [PICTURE]] : reads a file of annotations of any
//     format and writes it in another one; the remarks of both go to standard output. PICTURE is embedded.
// annotation_files pixels FROM WIDTH HEIGHT : the number of pixels of each region in an image of that size.
#include <Vantor/annotation/Annotations.h>
#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>

using namespace Vantor;
using namespace Vantor::Annotations;

namespace
{
int Fail(const std::string& why)
{
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}

void Print(const SReport& report)
{
    for (const SRemark& remark : report.remarks)
        std::printf("%s: %s\n", remark.object.c_str(), remark.text.c_str());
}

int Convert(int argc, char** argv)
{
    SContext context;
    if (argc >= 8) {
        context.width = std::atoi(argv[5]);
        context.height = std::atoi(argv[6]);
        context.imageName = argv[7];
    }
    if (argc >= 9) {
        std::ifstream picture(argv[8], std::ios::binary);
        context.picture.assign(std::istreambuf_iterator<char>(picture), {});
        context.pictureType = "image/png";
    }
    SDocument document;
    const SReport read = Load(argv[2], "", context, document);
    if (!read.failure.empty())
        return Fail(read.failure);
    Print(read);
    const SReport written = Save(document, argv[3], argv[4], context);
    Print(written);
    return written.failure.empty() ? 0 : Fail(written.failure);
}

std::unique_ptr<Geometry::CGeometry> GeometryOf(const SObject& object)
{
    const std::vector<double>& n = object.numbers;
    if (object.kind == "rectangle")
        return std::make_unique<Geometry::CRectangle>(n[0], n[1], n[2], n[3]);
    if (object.kind == "ellipse")
        return std::make_unique<Geometry::CEllipse>(n[0], n[1], n[2], n[3]);
    if (object.kind == "circle")
        return std::make_unique<Geometry::CCircle>(Geometry::CPoint<double>(n[0], n[1]), n[2]);
    if (object.kind != "polygon")
        return nullptr;
    Geometry::CPointList corners;
    for (std::size_t i = 0; i + 1 < n.size(); i += 2)
        corners.Add(Geometry::CPoint<double>(n[i], n[i + 1]));
    auto polygon = std::make_unique<Geometry::CPolygon>();
    polygon->SetPoints(corners);
    return polygon;
}

int CountPixels(char** argv)
{
    SDocument document;
    const SReport read = Load(argv[2], "", SContext(), document);
    if (!read.failure.empty())
        return Fail(read.failure);
    for (const SPage& page : document.pages) {
        for (const SObject& object : page.objects) {
            const auto geometry = GeometryOf(object);
            if (!geometry)
                continue;
            long long nPixels = 0;
            for (const auto& run : geometry->GetPixelRuns(std::atoi(argv[3]), std::atoi(argv[4])))
                nPixels += run.nEnd - run.nBegin;
            std::printf("%s\t%lld\n", object.name.c_str(), nPixels);
        }
    }
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    const std::string command = argc > 1 ? argv[1] : "";
    if (command == "convert" && argc >= 5)
        return Convert(argc, argv);
    if (command == "pixels" && argc == 5)
        return CountPixels(argv);
    return Fail(
        "annotation_files convert FROM TO FORMAT [WIDTH HEIGHT IMAGE [PICTURE]] | pixels FROM WIDTH HEIGHT");
}

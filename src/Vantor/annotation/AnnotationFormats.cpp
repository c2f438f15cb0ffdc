// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/annotation/AnnotationFormats_p.h>

namespace Vantor::Annotations
{

const std::vector<SFormat>& Formats()
{
    // clang-format off
    static const std::vector<SFormat> formats{
        {kOwnFormat, "vantor.json", IsOwn, ReadOwn, WriteOwn, true},
        {"LabelMe", "json", IsLabelMe, ReadLabelMe, WriteLabelMe, false},
        {"COCO", "json", IsCoco, ReadCoco, WriteCoco, true},
        {"GeoJSON", "geojson", IsGeoJson, ReadGeoJson, WriteGeoJson, false},
        {"ImageJ ROI", "roi", IsRoi, ReadRoi, WriteRoi, false},
        {"ImageJ ROI set", "zip", IsRoiSet, ReadRoiSet, WriteRoiSet, false},
        {"SVG", "svg", IsSvg, ReadSvg, WriteSvg, false},
        {"CVAT", "xml", IsCvat, ReadCvat, WriteCvat, true},
        {"Pascal VOC", "xml", IsVoc, ReadVoc, WriteVoc, false},
        {"YOLO", "txt", IsYolo, ReadYolo, WriteYolo, false, "classes.txt"},
        {"CSV", "csv", nullptr, nullptr, WriteCsv, true},
    };
    // clang-format on
    return formats;
}

} // namespace Vantor::Annotations

// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// java -cp ij.jar Measure.java IMAGE REGIONS : what ImageJ measures of regions of an image. REGIONS has a line for
//     each: a kind and its numbers. A line for each number: index of the region, name, number, parted by tabs.
import ij.IJ;
import ij.ImagePlus;
import ij.gui.*;
import ij.measure.Measurements;
import ij.process.*;
import java.io.PrintStream;
import java.nio.file.*;
import java.util.*;

public class Measure {
    static PrintStream out;
    static int index = 0;

    static void tell(String name, double number) {
        out.println(index + "\t" + name + "\t" + number);
    }

    static Roi roiOf(String kind, double[] n) {
        if (kind.equals("rectangle"))
            return new Roi(n[0], n[1], n[2], n[3]);
        if (kind.equals("ellipse"))
            return new OvalRoi(n[0], n[1], n[2], n[3]);
        if (kind.equals("line"))
            return new Line(n[0], n[1], n[2], n[3]);
        float[] x = new float[n.length / 2], y = new float[n.length / 2];
        for (int i = 0; i < x.length; ++i) {
            x[i] = (float)n[2 * i];
            y[i] = (float)n[2 * i + 1];
        }
        return new PolygonRoi(x, y, x.length, Roi.POLYGON);
    }

    static void tellPixels(String plane, ImagePlus image, Roi roi) {
        image.setRoi((Roi)roi.clone());
        ImageStatistics s = image.getStatistics(Measurements.AREA | Measurements.MEAN | Measurements.STD_DEV |
            Measurements.MODE | Measurements.MIN_MAX | Measurements.CENTROID | Measurements.CENTER_OF_MASS |
            Measurements.MEDIAN | Measurements.SHAPE_DESCRIPTORS);
        tell(plane + ".count", s.pixelCount);
        tell(plane + ".area", s.area);
        tell(plane + ".mean", s.mean);
        tell(plane + ".deviation", s.stdDev);
        tell(plane + ".min", s.min);
        tell(plane + ".max", s.max);
        tell(plane + ".median", s.median);
        tell(plane + ".mode", s.dmode);
        tell(plane + ".density", s.area * s.mean);
        tell(plane + ".centroid.x", s.xCentroid);
        tell(plane + ".centroid.y", s.yCentroid);
        tell(plane + ".mass.x", s.xCenterOfMass);
        tell(plane + ".mass.y", s.yCenterOfMass);
        tell(plane + ".aspect", s.major / s.minor);
    }

    static void tellLine(Line line, ImageProcessor pixels) {
        tell("length", line.getRawLength());
        tell("angle", line.getFloatAngle(line.x1d, line.y1d, line.x2d, line.y2d));
        pixels.setInterpolate(true);
        // Whole numbers are the centres of its pixels.
        double[] values = pixels.getLine(line.x1d - .5, line.y1d - .5, line.x2d - .5, line.y2d - .5);
        for (int i = 0; i < values.length; ++i)
            tell("profile." + i, values[i]);
    }

    public static void main(String[] args) throws Exception {
        out = new PrintStream(System.out, true, "UTF-8");
        ImagePlus image = IJ.openImage(args[0]);
        Map<String, ImagePlus> planes = new LinkedHashMap<>();
        if (image.getType() == ImagePlus.COLOR_RGB) {
            ColorProcessor colors = (ColorProcessor)image.getProcessor();
            for (int c = 0; c < 3; ++c)
                planes.put("" + c, new ImagePlus("", new ByteProcessor(image.getWidth(), image.getHeight(), colors.getChannel(c + 1))));
            planes.put("grey", image);
            ColorProcessor weighted = (ColorProcessor)colors.duplicate();
            weighted.setRGBWeights(.299, .587, .114);
            planes.put("weighted", new ImagePlus("", weighted));
        } else {
            planes.put("0", image);
        }
        for (String line : Files.readAllLines(Paths.get(args[1]))) {
            String[] words = line.split(" ");
            Roi roi = roiOf(words[0], Arrays.stream(words).skip(1).mapToDouble(Double::parseDouble).toArray());
            double[] feret = roi.getFeretValues();
            tell("feret", feret[0]);
            tell("feretAngle", feret[1]);
            tell("minFeret", feret[2]);
            if (roi instanceof Line) {
                tellLine((Line)roi, planes.get("0").getProcessor());
            } else {
                tell("perimeter", roi.getLength());
                for (Map.Entry<String, ImagePlus> plane : planes.entrySet())
                    tellPixels(plane.getKey(), plane.getValue(), roi);
            }
            ++index;
        }
    }
}

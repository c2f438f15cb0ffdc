// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// java -cp ij.jar ImageJ.java tell WIDTH HEIGHT FILE... : what ImageJ makes of .roi files and sets of them: a
//     line each of name, type, x, y, width, height, pixels (of areas), corners, parted by tabs.
// java -cp ij.jar ImageJ.java write SET : a set of regions as ImageJ writes it.
import ij.ImagePlus;
import ij.gui.*;
import ij.io.RoiDecoder;
import ij.io.RoiEncoder;
import ij.process.ByteProcessor;
import ij.process.FloatPolygon;
import java.awt.geom.Rectangle2D;
import java.io.*;
import java.nio.file.*;
import java.util.zip.*;

public class ImageJ {
    static PrintStream out;

    static void tell(Roi roi, ImagePlus image) {
        Rectangle2D box = roi.getFloatBounds();
        StringBuilder line = new StringBuilder(roi.getName() + "\t" + roi.getClass().getSimpleName() + "/" + roi.getType());
        for (double number : new double[] {box.getX(), box.getY(), box.getWidth(), box.getHeight()})
            line.append("\t").append(number);
        image.setRoi((Roi)roi.clone());
        line.append("\t").append(roi.isArea() ? image.getStatistics().pixelCount : 0).append("\t");
        if (roi instanceof Line) {
            Line shape = (Line)roi;
            line.append(shape.x1d + "," + shape.y1d + " " + shape.x2d + "," + shape.y2d);
        } else if (roi.getType() != Roi.RECTANGLE && roi.getType() != Roi.OVAL && roi.getType() != Roi.COMPOSITE) {
            FloatPolygon corners = roi.getFloatPolygon();
            for (int i = 0; i < corners.npoints; ++i)
                line.append(i > 0 ? " " : "").append((double)corners.xpoints[i] + "," + (double)corners.ypoints[i]);
        }
        out.println(line);
    }

    static void tell(String[] args) throws Exception {
        ImagePlus image = new ImagePlus("", new ByteProcessor(Integer.parseInt(args[1]), Integer.parseInt(args[2])));
        for (int i = 3; i < args.length; ++i) {
            if (args[i].endsWith(".roi")) {
                tell(new RoiDecoder(args[i]).getRoi(), image);
                continue;
            }
            ZipInputStream set = new ZipInputStream(new FileInputStream(args[i]));
            for (ZipEntry entry = set.getNextEntry(); entry != null; entry = set.getNextEntry())
                tell(new RoiDecoder(set.readAllBytes(), entry.getName()).getRoi(), image);
        }
    }

    static ZipOutputStream set;
    static int count = 0;

    static void add(Roi roi) throws Exception {
        String name = String.format("%02d", ++count);
        roi.setName(name);
        set.putNextEntry(new ZipEntry(name + ".roi"));
        set.write(RoiEncoder.saveAsByteArray(roi));
        set.closeEntry();
    }

    static void write(String path) throws Exception {
        set = new ZipOutputStream(new FileOutputStream(path));
        add(new Roi(10, 20, 50, 60));
        add(new Roi(10.5, 20.25, 50.125, 60.75));
        add(new OvalRoi(30, 40, 60, 30));
        add(new OvalRoi(30.5, 40.25, 60.75, 30.5));
        add(new PolygonRoi(new int[] {1, 50, 30}, new int[] {2, 9, 70}, 3, Roi.POLYGON));
        add(new PolygonRoi(new float[] {1.5f, 50.25f, 30}, new float[] {2, 9.75f, 70.125f}, 3, Roi.POLYGON));
        add(new PolygonRoi(new int[] {5, 9, 9, 7, 5}, new int[] {5, 5, 8, 11, 8}, 5, Roi.FREEROI));
        add(new PolygonRoi(new int[] {5, 9, 9, 5}, new int[] {5, 5, 8, 8}, 4, Roi.TRACED_ROI));
        add(new Line(3, 4, 100, 200));
        add(new Line(3.5, 4.25, 100.75, 200.125));
        add(new Arrow(100.5, 200.25, 10.5, 20));
        add(new PointRoi(7.5, 8.25));
        add(new PointRoi(7, 8));
        add(new RotatedRectRoi(20, 20, 100, 60, 30));
        add(new EllipseRoi(20, 20, 100, 60, 0.5));
        Roi colored = new Roi(300, 200, 50, 60);
        colored.setStrokeColor(new java.awt.Color(10, 20, 30, 200));
        add(colored);
        Roi later = new Roi(1, 2, 3, 4);
        later.setPosition(3);
        add(later);
        set.close();
    }

    public static void main(String[] args) throws Exception {
        out = new PrintStream(System.out, true, "UTF-8");
        if (args[0].equals("write"))
            write(args[1]);
        else
            tell(args);
    }
}

// Java: an area and a curve through JNA (Debian: libjna-java).
//   java -cp /usr/share/java/jna.jar -Djna.library.path=<folder of the libraries> Auc.java
import com.sun.jna.Library;
import com.sun.jna.Native;
import com.sun.jna.Pointer;
import com.sun.jna.Structure;
import com.sun.jna.Structure.FieldOrder;
import java.util.Locale;

public class Auc {
    @FieldOrder({"posCount", "negCount", "area", "stdError", "asymptoticSig", "ciLower", "ciUpper"})
    public static class AucRes extends Structure implements Structure.ByValue {
        public double posCount, negCount, area, stdError, asymptoticSig, ciLower, ciUpper;
    }

    @FieldOrder({"rows", "count"})
    public static class CurveRes extends Structure implements Structure.ByValue {
        public Pointer rows;
        public int count;
    }

    public interface Roc extends Library {
        AucRes auc(double[] actual, double[] predicted, int n, double[] positiveValue, String include, String larger,
                   String distribution, double confidenceLevel);
        CurveRes roccurve(double[] actual, double[] predicted, int n, double[] positiveValue, String include,
                          String larger);
        void release_roccurve_res(CurveRes curve);
    }

    public static void main(String[] arguments) {
        Roc roc = Native.load("vexrocproc920r", Roc.class);
        double[] sick = {1, 1, 1, 1, 1, 0, 0, 0, 0, 0};
        double[] marker = {7.1, 6.4, 8.0, 5.2, 6.9, 4.8, 5.9, 5.2, 3.3, 4.1};

        AucRes area = roc.auc(sick, marker, sick.length, null, "include", "larger", "nonparam", 0.95);
        System.out.printf(Locale.ROOT, "area %.3f, standard error %.3f%n", area.area, area.stdError);

        // The rows are ours until we give them back; null rows mean that memory ran out.
        CurveRes curve = roc.roccurve(sick, marker, sick.length, null, "include", "larger");
        if (curve.rows == null)
            throw new OutOfMemoryError("roccurve");
        double[] rows = curve.rows.getDoubleArray(0, 3 * curve.count);
        roc.release_roccurve_res(curve);
        System.out.printf(Locale.ROOT, "%d points, the first at cut-off %.2f%n", curve.count, rows[0]);
    }
}

// Writes tests/data/jet/MoreKinds.mdb: the Jet column kinds the SQLite-based
// writer cannot make (Byte, Single, Decimal, Replication ID, Binary), with
// Jackcess. Run with jackcess.jar, commons-lang3 and commons-logging on the
// class path: java MoreKinds OUT.mdb
import com.healthmarketscience.jackcess.*;
import java.io.File;
import java.math.BigDecimal;

public class MoreKinds {
    public static void main(String[] args) throws Exception {
        File out = new File(args[0]);
        out.delete();
        try (Database db = new DatabaseBuilder(out).setFileFormat(Database.FileFormat.V2000).create()) {
            Table t = new TableBuilder("MoreKinds")
                .addColumn(new ColumnBuilder("Tiny", DataType.BYTE))
                .addColumn(new ColumnBuilder("Ratio", DataType.FLOAT))
                .addColumn(new ColumnBuilder("Exact", DataType.NUMERIC).setPrecision(18).setScale(4))
                .addColumn(new ColumnBuilder("Guid", DataType.GUID))
                .addColumn(new ColumnBuilder("Raw", DataType.BINARY).setLength(8))
                .toTable(db);
            t.addRow((byte) 200, 0.5f, new BigDecimal("12345678901234.5678"), "{6F9619FF-8B86-D011-B42D-00C04FC964FF}",
                     new byte[] {1, 2, 3, 0, (byte) 255});
            t.addRow((byte) 0, -1.25f, new BigDecimal("-0.0001"), null, null);
            t.addRow(null, null, null, null, new byte[0]);
        }
    }
}

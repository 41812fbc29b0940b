import java.io.File;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.util.ArrayList;
import java.util.List;
import ui.data.platform.*;
import ui.frmwork.cmd.CommandFailedException;

/**
 * Drives the JVM binding from Java as the IDE does: loads the library named by the property
 * zr.lib, reads the sample platform under args[0] and writes scratch files under args[1].
 * Prints "N passed, N failed" and exits non-zero on a failure.
 */
public final class PlatformBindingTest {
  private static int passed;
  private static int failed;

  interface Body {
    void run() throws Throwable;
  }

  private static void check(String what, boolean ok) {
    if (ok) {
      passed++;
    } else {
      failed++;
      System.out.println("FAILED: " + what);
    }
  }

  private static void checkEq(String what, Object expected, Object actual) {
    boolean ok = expected == null ? actual == null : expected.equals(actual);
    check(what + " (expected <" + expected + ">, got <" + actual + ">)", ok);
  }

  /** The body must raise exactly `type` with `message` (any message when null). */
  private static void expectThrow(String what, Class<?> type, String message, Body body) {
    try {
      body.run();
      check(what + ": nothing was thrown", false);
    } catch (Throwable t) {
      boolean ok = t.getClass() == type && (message == null || message.equals(t.getMessage()));
      check(what + ": got " + t.getClass().getName() + " <" + t.getMessage() + ">", ok);
    }
  }

  private static StringVector strings(String... items) {
    StringVector v = new StringVector();
    for (String s : items) v.push_back(s);
    return v;
  }

  private static List<String> list(StringVector v) {
    List<String> out = new ArrayList<>();
    StringIter it = v.createIter();
    while (it.hasNext()) out.add(it.next());
    it.delete();
    return out;
  }

  public static void main(String[] args) throws Exception {
    System.load(System.getProperty("zr.lib"));
    String repo = args[0];
    File work = new File(args[1]);
    work.mkdirs();

    TEQPlatformMgr mgr = new TEQPlatformMgr();
    mgr.addPlatformsFromDirs(strings(repo));
    TEQPlatform platform = mgr.getPlatform("acme_dc");

    naming(mgr, platform);
    if (platform != null) {
      strings(platform);
      references(platform);
      containers(mgr);
      exceptions(platform, work);
      endToEnd(repo, mgr, platform, work);
    }
    mgr.delete();

    System.out.println(passed + " passed, " + failed + " failed");
    System.exit(failed == 0 ? 0 : 1);
  }

  // The library's objects under their Java names, reached through the manager.
  private static void naming(TEQPlatformMgr mgr, TEQPlatform platform) {
    check("the manager finds the sample platform by name", platform != null);
    if (platform == null) return;
    checkEq("one platform registered", 1L, mgr.getNumPlatforms());
    checkEq("the descriptor name", "acme_dc", platform.getName());
    check("the hardware platform is reached", platform.getHardwarePlatform() != null);
    TEQSoftwarePlatform sw = platform.getSoftwarePlatform();
    check("the software platform is reached", sw != null);
    check("a model object is a JSONSerializable", sw instanceof JSONSerializable);
    check("an absent name answers null", mgr.getPlatform("no_such_platform") == null);
  }

  // Text in and out through the library's UTF-8 strings.
  private static void strings(TEQPlatform platform) {
    String saved = platform.getDescription();
    String[][] rows = {
      {"ASCII", "plain text", "plain text"},
      {"Latin and Greek", "Größe αβγ", "Größe αβγ"},
      {"CJK", "平台描述", "平台描述"},
      {"empty", "", ""},
      // Each unit of a pair is widened alone, so neither half is a character.
      {"non-BMP", "a\uD83D\uDE00b", "a\uFFFD\uFFFDb"},
      {"lone surrogate", "x\uD800y", "x\uFFFDy"},
    };
    for (String[] row : rows) {
      platform.setDescription(row[1]);
      checkEq("string round trip, " + row[0], row[2], platform.getDescription());
    }
    platform.setDescription("kept");
    expectThrow("a null string", NullPointerException.class, "null std::string",
        () -> platform.setDescription(null));
    checkEq("the setter was not entered", "kept", platform.getDescription());
    platform.setDescription(saved);
  }

  // Null references and null handles: a Java exception with the type's own words.
  private static void references(TEQPlatform platform) {
    TEQHardwarePlatform hw = platform.getHardwarePlatform();
    expectThrow("null vector reference", NullPointerException.class,
        "HTEQPlatformMgr::StringVector const & reference is null",
        () -> new TEQPlatformMgr().addPlatformsFromDirs((StringVector) null));
    expectThrow("null writer reference", NullPointerException.class,
        "teq_platform::JSONObjectWriter & reference is null", () -> platform.toJSON(null));
    expectThrow("null enum", NullPointerException.class,
        "Attempt to dereference null HTEQPfmFileTypes::FileType",
        () -> hw.getFile((SWIGTYPE_p_HTEQPfmFileTypes__FileType) null));
    expectThrow("null uint32_t", NullPointerException.class, "Attempt to dereference null uint32_t",
        () -> hw.findReconfigPartition(null));
    check("a null pointer argument passes as null", TEQPlatformUtils.isLatestVersion((TEQPlatform) null));
    StringVector gone = strings("a");
    gone.delete();
    gone.delete();  // a second delete does nothing
    expectThrow("a deleted vector", NullPointerException.class,
        "StringVector object is deleted or null", () -> gone.size());
  }

  // Vectors and iterators: order, size, clear, empty iteration, ownership.
  private static void containers(TEQPlatformMgr mgr) {
    StringVector v = strings("one", "zwei", "три");
    checkEq("size after three pushes", 3L, v.size());
    checkEq("iteration keeps push order", List.of("one", "zwei", "три"), list(v));
    v.clear();
    checkEq("size after clear", 0L, v.size());
    StringIter empty = v.createIter();
    check("a fresh iterator over an empty vector has no next", !empty.hasNext());
    expectThrow("next past the end", CommandFailedException.class, "iterator has no next element",
        () -> empty.next());
    empty.delete();
    v.delete();

    TEQPlatformVector platforms = new TEQPlatformVector();
    mgr.getPlatforms(platforms);
    checkEq("the manager fills a platform vector", 1L, platforms.size());
    TEQPlatformIter it = mgr.createPlatformIter();
    checkEq("the manager's iterator gives the platform", "acme_dc", it.hasNext() ? it.next().getName() : null);
    check("and then ends", !it.hasNext());
    it.delete();
    platforms.clear();  // drops the pointers only: the manager still owns the platform
    checkEq("clear leaves the model alone", "acme_dc", mgr.getPlatform("acme_dc").getName());
    platforms.delete();
  }

  // Library failures arrive as the IDE's exception, and the JVM goes on.
  private static void exceptions(TEQPlatform platform, File work) {
    String missing = new File(work, "missing.hdf").getPath();
    expectThrow("HEXAll from a constructor", CommandFailedException.class,
        "Could not find specified file: '" + missing + "'on disk.",
        () -> new HDFToCFAConverter(missing, work.getPath(), "x.cfa"));
    JSONListWriter list = new JSONListWriter();
    expectThrow("HEXAll from a method", CommandFailedException.class, null, () -> list.addItem(true));
    check("the list is unchanged after the failure", list.empty());
    list.delete();
    expectThrow("HEXAll from deep inside a load", CommandFailedException.class, null,
        () -> new NativeCatalogService().getAsJsonStr(missing.replace(".hdf", ".zdf"), true, false));
    checkEq("calls work after the exceptions", "acme_dc", platform.getName());
  }

  // The IDE's paths: manager and helper, hardware and software model, catalog,
  // path query, HDF conversion.
  private static void endToEnd(String repo, TEQPlatformMgr mgr, TEQPlatform platform, File work)
      throws Exception {
    TEQHardwarePlatform hw = platform.getHardwarePlatform();
    checkEq("hardware VBNV name", "base", hw.getName());
    checkEq("hardware default clock", "100", hw.getDefaultClockFrequency());
    TEQSystemClockVec clocks = new TEQSystemClockVec();
    hw.getSystemClocks(clocks);
    check("the hardware has clocks", clocks.size() > 0);
    TEQSystemClockIter clockIt = hw.createSystemClockIter();
    checkEq("first clock through the model's iterator", "clk_out0", clockIt.next().getName());
    clockIt.delete();
    clocks.delete();

    TEQSoftwarePlatform sw = platform.getSoftwarePlatform();
    TEQSystemConfig config = sw.getDefaultSystemConfig();
    checkEq("default system configuration", "host_cfg", config.getName());
    StringVector runtimes = new StringVector();
    config.getRuntimesByPrettyName(runtimes);
    checkEq("runtimes by pretty name", List.of("OpenCL", "C/C++"), list(runtimes));
    runtimes.delete();
    TEQProcessorGroupVec groups = new TEQProcessorGroupVec();
    config.getProcessorGroups(groups);
    checkEq("processor group", "x86_0", groups.size() == 1 ? groups.createIter().next().getName() : null);
    groups.delete();

    String zdf = platform.getPlatformFile();
    TEQPlatformEngineHelper byName = new TEQPlatformEngineHelper(zdf, strings(repo), strings());
    check("the helper loads the descriptor", byName.isValid());
    checkEq("helper FPGA part", hw.getPartName(), byName.getFpgaPart());
    checkEq("helper default configuration", "host_cfg", byName.getDefaultSystemConfig().getName());
    byName.delete();
    TEQPlatformEngineHelper wrapping = new TEQPlatformEngineHelper(platform);
    checkEq("helper over a managed platform", "acme", wrapping.getVendor());
    wrapping.delete();

    NativeCatalogService catalog = new NativeCatalogService();
    String report = catalog.getAllAsJsonStr(repo, false, false);
    check("the catalog report names the platform", report.contains("acme_dc.zdf"));
    catalog.delete();

    NativeObjectService objects = new NativeObjectService();
    String document = objects.getAsJsonStr(zdf);
    checkEq("path query on the document", "acme_dc", objects.getObjectsByPath(document, "name"));
    objects.delete();

    File hdf = new File(work, "top_design.hdf");
    Files.write(hdf.toPath(), "handoff".getBytes(StandardCharsets.UTF_8));
    HDFToCFAConverter converter = new HDFToCFAConverter(hdf.getPath(), work.getPath(), "card.lfa");
    check("the HDF converts", converter.writeCFA());
    check("the archive exists", new File(converter.getHwPfmFile()).isFile());
    converter.delete();
  }
}

#ifndef TESTS_HPFM_HPFMTESTDOC_H
#define TESTS_HPFM_HPFMTESTDOC_H

// Builds hardware platform files for the tests. Every element stands on a
// line of its own, so a test can name the line of a failure: the repository
// is line 2, the component line 3, deviceInfo line 5, description line 6,
// systemClocks line 7 and its clocks from line 8; without clocks the body
// (parameters, bus interfaces, ...) starts at line 10.

#include <initializer_list>
#include <string>

namespace hpfm_test {

struct HpfmDoc {
  std::string repositoryAttrs = R"(kp:name="repo" kp:library="lib" kp:version=" 1.10 " kp:vendor="acme")";
  std::string componentAttrs =
      R"(kp:name="shell_u1" kp:library="lib" kp:version="2.0" kp:vendor="acme" kp:type="platform" )"
      R"(kp:BRAM="10" kp:DSP="20" kp:FF="30" kp:LUT=" 40 ")";
  std::string deviceInfo =
      R"(<kp:deviceInfo kp:architecture="arch" kp:device="dev" kp:package="pkg" kp:speedGrade="-2"/>)";
  std::string description = "A shell &amp; its clocks";
  std::string defaultClock = "0";
  std::string clocks;  // kp:clock elements, one to a line
  std::string body;    // parameters, bus interfaces, NoC connectivity, estimates
  std::string nsUri = "urn:teq:hpfm";

  std::string text() const {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<kp:repository xmlns:kp=\"" +
           nsUri + "\" " + repositoryAttrs +
           ">\n"
           "  <kp:component " +
           componentAttrs +
           ">\n"
           "    <kp:platformInfo>\n"
           "      " +
           deviceInfo +
           "\n"
           "      <kp:description>" +
           description +
           "</kp:description>\n"
           "      <kp:systemClocks kp:defaultClock=\"" +
           defaultClock + "\">\n" + clocks +
           "      </kp:systemClocks>\n"
           "    </kp:platformInfo>\n" +
           body +
           "  </kp:component>\n"
           "</kp:repository>\n";
  }
};

inline std::string clock(const std::string& attrs) { return "        <kp:clock " + attrs + "/>\n"; }

inline std::string segment(const std::string& attrs) { return "      <kp:addressSegment " + attrs + "/>\n"; }

inline std::string busInterface(const std::string& attrs, const std::string& segments = "") {
  if (segments.empty()) return "    <kp:busInterface " + attrs + "/>\n";
  return "    <kp:busInterface " + attrs + ">\n" + segments + "    </kp:busInterface>\n";
}

// An HBM interface with one segment per auto value ("" for a segment without kp:auto).
inline std::string hbmInterface(const std::string& name, const std::string& instance,
                                std::initializer_list<const char*> autos) {
  std::string segments;
  int index = 0;
  for (const char* a : autos) {
    const std::string autoAttr = *a ? std::string(" kp:auto=\"") + a + "\"" : std::string();
    segments += segment("kp:name=\"HBM[" + std::to_string(index) + "]\" kp:index=\"" + std::to_string(index) +
                        "\"" + autoAttr);
    ++index;
  }
  return busInterface("kp:name=\"" + name + "\" kp:componentRef=\"hbm_memory_subsystem\" kp:instanceRef=\"" +
                          instance + "\" kp:memport=\"MEMSS\"",
                      segments);
}

}  // namespace hpfm_test

#endif

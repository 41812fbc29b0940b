// Builds against the installed headers and library; prints a writer's text.
#include <iostream>
#include <sstream>

#include "platform/JSONObjectWriter.h"

int main() {
  teq_platform::JSONObjectWriter w;
  w.addKey("consumer", std::string("ok"));
  std::ostringstream out;
  w.write(out);
  std::cout << out.str();
  return out.str() == "{\n    \"consumer\": \"ok\"\n}\n" ? 0 : 1;
}

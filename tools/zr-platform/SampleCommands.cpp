// gen-sample: a sample repository of platforms.

#include <memory>
#include <string>

#include "CliSupport.h"
#include "Commands.h"
#include "SampleGenerator.h"

namespace zr_cli {

void addSampleCommands(CLI::App& app, Commands& commands) {
  auto dir = std::make_shared<std::string>();
  auto options = std::make_shared<SampleOptions>();
  auto* genSample = app.add_subcommand("gen-sample", "Write a sample repository of platforms");
  genSample->add_option("DIR", *dir, "Directory to write into (made when missing)")->required();
  genSample
      ->add_option("--count", options->count, "Number of platforms (the first five are one of each kind)")
      ->check(CLI::Range(1, 100000));
  genSample->add_option("--scale", options->scale, "Size of each platform's metadata (1: about 430 KB)")
      ->check(CLI::Range(0.01, 1000.0));
  genSample->add_flag("--policy", options->policy, "Also write platforms whose support verdicts differ");
  commands.push_back({genSample, [dir, options](std::ostream& out) {
                        return guarded(*dir, [&](MessageCollector&) {
                          for (const auto& written : generateSample(*dir, *options)) out << written << "\n";
                          return int(kOk);
                        });
                      }});
}

}  // namespace zr_cli

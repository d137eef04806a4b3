// qavrba dof: depth-of-field services.
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "QAVCli.h"
#include "QAVRbaLiveUIServices.h"

namespace {

std::string Aperture(float aperture) {
  char text[32];
  (void)std::snprintf(text, sizeof text, "f/%g", static_cast<double>(aperture));
  return text;
}

int Bokeh(const std::vector<float>& apertures) {
  int status = 0;
  for (const float aperture : apertures) {
    QAVString path;
    if (SUCCEEDED(QAVRbaLiveUIServices::RetrieveAssociatedBokehImage(aperture, path))) {
      std::printf("%s\t%s\n", Aperture(aperture).c_str(), path.c_str());
    } else {
      status = qavcli::Fail(
          !(aperture > 0.0F)
              ? Aperture(aperture) + ": an aperture must be a number above 0"
              : Aperture(aperture) +
                    ": no bokeh texture under dof/ of QAVGraphicPath (its last entry excepted)");
    }
  }
  return status;
}

void Setup(CLI::App& program) {
  CLI::App* dof = program.add_subcommand("dof", "Depth-of-field services.");
  dof->require_subcommand(1);
  auto apertures = std::make_shared<std::vector<float>>();
  CLI::App* bokeh = dof->add_subcommand(
      "bokeh", "The bokeh texture of each f-number F, found under dof/ along QAVGraphicPath.");
  bokeh->add_option("f", *apertures, "F-numbers")->required();
  qavcli::OnRun(bokeh, [apertures] { return Bokeh(*apertures); });
}

}  // namespace

QAV_CLI_COMMAND("dof", Setup);

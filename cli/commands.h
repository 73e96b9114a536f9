// Sub-commands of vantrel-cli. Each takes the arguments after its own name and
// returns the process exit code.
#pragma once

#include <string>
#include <vector>

namespace vt::cli {

using Args = std::vector<std::string>;

// "800x600" (or "800X600") with both sides from minSide to maxSide.
bool ParseSize(const std::string& text, int& w, int& h, long minSide, long maxSide);

int RunText(const Args& args);    // text DOC.vtd
int RunCalc(const Args& args);    // calc FORMULA [NAME=VALUE ...] [--deg] [--report] [--derive VAR]
int RunRender(const Args& args);  // render DOC.vtd OUT.png [--size WxH] [--3d]
int RunAvi(const Args& args);     // avi DOC.vtd OUT.avi [--player ID] [--fps N] [--size WxH] [--codec NAME]
int RunModels(const Args& args);  // models MODELS_DIR [START.vtd]

}  // namespace vt::cli

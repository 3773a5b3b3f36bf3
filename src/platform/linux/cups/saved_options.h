// What lpoptions saved for a queue, and what of it goes along with a job.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform_linux::cups {

using Options = std::map<std::string, std::string>;  // by their names, as CUPS has them

// The options of a queue, or of its instance where one is named, in the content of a file of lpoptions (lpoptions(1)):
// a line is "Dest" or "Default", the queue, "/instance" where it is one's, and options.
Options savedIn(const std::string& file, const std::string& queue, const std::string& instance);

// Those in the server's lpoptions, and over them those of ~/.cups/lpoptions.
Options savedOptions(const std::string& queue, const std::string& instance);

// The colour mode that saved options ask for, 1 monochrome or 2 colour; nothing where they do not.
std::optional<int> savedColorMode(const Options& saved);

// Whether saved options name a paper source.
bool haveSource(const Options& saved);

// Of the sources given the one that saved options name by its standard name; empty where there is none, and where the
// driver's own option names one.
std::string savedSource(const Options& saved, const std::vector<std::string>& sources);

// Adds the saved options to a job's own. Those that concern what the job sets - paper, orientation, scaling, colour
// mode, and the source, if the job chooses it - do not come, whatever they are called.
void addSaved(Options& job, const Options& saved, bool jobHasSource, int colorMode);

}  // namespace platform_linux::cups

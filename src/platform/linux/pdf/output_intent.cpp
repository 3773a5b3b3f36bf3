#include "platform/linux/pdf/output_intent.h"

#include "platform/linux/pdf/srgb_profile.h"

namespace platform_linux::pdf {

void appendOutputIntent(ObjectWriter& writer, std::string& catalog) {
    const int profile = writer.allocate();
    // Compressing it would save 150 bytes and cost a short document a hundredth of its time.
    writer.storedStream(profile, "/N 3", srgbProfile());
    catalog +=
        "/OutputIntents[<</Type/OutputIntent/S/GTS_PDFA1/OutputConditionIdentifier(sRGB)"
        "/Info(IEC 61966-2-1 sRGB)/DestOutputProfile ";
    appendReference(catalog, profile);
    catalog += ">>]";
}

}  // namespace platform_linux::pdf

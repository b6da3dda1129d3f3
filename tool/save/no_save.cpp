// In place of the other sources of this folder, for a build without libcurl.
#include "output/messages.h"
#include "save/save_run.h"

namespace pagescan::tool {

ExitStatus runSave(const SaveOptions& /*options*/, Output& /*output*/) {
  tell("save: this program was built without libcurl, which fetches");
  return kFailed;
}

}  // namespace pagescan::tool

#include "Common/Revision.hpp"

namespace KorvaniCommon {

RevisionStamp nextRevisionStamp() {
  static std::atomic<RevisionStamp> last{0};
  return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

}  // namespace KorvaniCommon

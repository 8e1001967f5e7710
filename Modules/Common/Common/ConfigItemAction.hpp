#pragma once

namespace KorvaniCommon {

/// What generic settings screens can ask of a configuration item.
///
/// A module describes its settings as items. Each item answers these actions, so that a
/// settings screen can list, label, read, write and reset items of modules it knows nothing
/// about. The numbers are stable: hosts may store or send them.
enum class KRVCommonConfigItemAction : int {
  title = 0,             ///< a short name for people, a string
  shortDescription = 1,  ///< one line for people, a string that may be empty
  defaultValue = 2,      ///< the value of a fresh configuration, a number
  getValue = 3,          ///< the present value in a configuration, a number
  setValue = 4,          ///< writes a number into a configuration; no result
};

}  // namespace KorvaniCommon

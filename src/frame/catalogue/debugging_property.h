// The `Debugging` property, which several classes and modules have. Auto-completion does not show it.
#pragma once

#include "frame/catalogue/flags.h"
#include "frame/catalogue/rows.h"
#include "runtime/debug_log.h"

namespace zkt {

inline REALproperty DebuggingProperty() {
  static constexpr REALattribute kHidden[] = {{"Hidden", ""}};
  REALproperty row =
      SharedProperty<REALboolean>("Debugging", "Boolean", getDebugging, setDebugging, kPropertyWithoutObject);
  row.attributeCount = 1;
  row.attributes = kHidden;
  return row;
}

}  // namespace zkt

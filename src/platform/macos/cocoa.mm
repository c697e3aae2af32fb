#include "platform/cocoa.h"

#import <Foundation/Foundation.h>

// Implemented by others, if at all: nothing here may be called without asking.
@interface NSException (OptionalZKT)
+ (NSDictionary*)GetInstancesDictionaryZKT;
+ (void)PrepareNSExceptionZKT;
@end

namespace zkt {

bool KeepExceptionInstances() {
  if (![NSException respondsToSelector:@selector(GetInstancesDictionaryZKT)]) return false;
  static NSDictionary* instances = nil;
  if (instances == nil) instances = [[NSException GetInstancesDictionaryZKT] retain];
  return true;
}

bool PrepareExceptions() {
  if (![NSException respondsToSelector:@selector(PrepareNSExceptionZKT)]) return false;
  [NSException PrepareNSExceptionZKT];
  return true;
}

}  // namespace zkt

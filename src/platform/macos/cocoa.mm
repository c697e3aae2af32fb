#include "platform/cocoa.h"

#import <Foundation/Foundation.h>

// Other components may implement these methods. Check that a method exists before calling it.
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

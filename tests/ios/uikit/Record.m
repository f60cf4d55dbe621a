#import "tests/ios/uikit/Record.h"

static NSMutableArray* lines(void) {
  static NSMutableArray* all = nil;
  if (!all) all = [[NSMutableArray alloc] init];
  return all;
}

static NSMutableDictionary* numbers(void) {
  static NSMutableDictionary* all = nil;
  if (!all) all = [[NSMutableDictionary alloc] init];
  return all;
}

void Record(NSString* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  [lines() addObject:[[[NSString alloc] initWithFormat:format arguments:arguments] autorelease]];
  va_end(arguments);
}

NSArray* TakeRecord(void) {
  NSArray* const taken = [[lines() copy] autorelease];
  [lines() removeAllObjects];
  [numbers() removeAllObjects];
  return taken;
}

unsigned RecordNumber(const char* kind, double value) {
  NSString* const name = [NSString stringWithUTF8String:kind];
  NSMutableArray* known = [numbers() objectForKey:name];
  if (!known) [numbers() setObject:(known = [NSMutableArray array]) forKey:name];
  NSNumber* const number = @(value);
  if (![known containsObject:number]) [known addObject:number];
  return (unsigned)[known indexOfObject:number] + 1;
}

NSString* RecordName(id object) { return object ? NSStringFromClass([object class]) : @"nil"; }

// Image contexts, pictures and the drawing of views, with cairo and turbojpeg.
#import "tests/ios/uikit/Drawing.h"

#include <cairo.h>
#include <turbojpeg.h>

#import "tests/ios/uikit/State.h"

typedef struct {
  cairo_surface_t* surface;
  CGFloat scale;
} ImageState;

static NSMutableArray* contexts(void) {
  static NSMutableArray* stack = nil;
  if (!stack) stack = [[NSMutableArray alloc] init];
  return stack;
}

static UIImage* current(void) { return [contexts() lastObject]; }

@implementation UIImage

STATE_IS(ImageState)

- (void)dealloc {
  cairo_surface_destroy(STATE(ImageState)->surface);
  [super dealloc];
}

- (cairo_surface_t*)surface {
  return STATE(ImageState)->surface;
}
- (CGFloat)scale {
  return STATE(ImageState)->scale;
}

- (CGSize)size {
  const ImageState* const state = STATE(ImageState);
  return NSMakeSize(cairo_image_surface_get_width(state->surface) / state->scale,
                    cairo_image_surface_get_height(state->surface) / state->scale);
}

- (void)setSize:(CGSize)size opaque:(BOOL)opaque scale:(CGFloat)scale {
  ImageState* const state = STATE(ImageState);
  state->scale = scale > 0 ? scale : [[UIScreen mainScreen] scale];
  state->surface = cairo_image_surface_create(opaque ? CAIRO_FORMAT_RGB24 : CAIRO_FORMAT_ARGB32,
                                              (int)(size.width * state->scale),
                                              (int)(size.height * state->scale));
}

- (void)drawAtPoint:(CGPoint)point {
  const double scale = [self scale];
  cairo_t* const cairo = cairo_create([current() surface]);
  cairo_set_source_surface(cairo, [self surface], point.x * scale, point.y * scale);
  cairo_paint(cairo);
  cairo_destroy(cairo);
}

@end

void UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale) {
  if (!(size.width > 0 && size.height > 0)) {
    [NSException raise:NSInternalInconsistencyException format:@"a context of no extent"];
  }
  UIImage* const image = [[[UIImage alloc] init] autorelease];
  [image setSize:size opaque:opaque scale:scale];
  [contexts() addObject:image];
}

UIImage* UIGraphicsGetImageFromCurrentImageContext(void) {
  return [[current() retain] autorelease];
}

void UIGraphicsEndImageContext(void) { [contexts() removeLastObject]; }

static UIColor* fill = nil;

void UIRectFill(CGRect rect) {
  const CGFloat* const components = CGColorGetComponents([fill CGColor]);
  const double scale = [current() scale];
  cairo_t* const cairo = cairo_create([current() surface]);
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  cairo_set_source_rgba(cairo, components[0], components[1], components[2], components[3]);
  cairo_rectangle(cairo, rect.origin.x * scale, rect.origin.y * scale, rect.size.width * scale,
                  rect.size.height * scale);
  cairo_fill(cairo);
  cairo_destroy(cairo);
}

@implementation UIColor (Drawing)

- (void)setFill {
  [self retain];
  [fill release];
  fill = self;
}

@end

NSData* UIImageJPEGRepresentation(UIImage* image, CGFloat quality) {
  cairo_surface_t* const surface = [image surface];
  cairo_surface_flush(surface);
  unsigned char* bytes = NULL;
  unsigned long length = 0;
  const tjhandle encoder = tjInitCompress();
  tjCompress2(encoder, cairo_image_surface_get_data(surface),
              cairo_image_surface_get_width(surface), cairo_image_surface_get_stride(surface),
              cairo_image_surface_get_height(surface), TJPF_BGRX, &bytes, &length, TJSAMP_420,
              (int)(quality * 100), 0);
  NSData* const data = [NSData dataWithBytes:bytes length:length];
  tjFree(bytes);
  tjDestroy(encoder);
  return data;
}

static void setColor(cairo_t* cairo, UIColor* color) {
  const CGFloat* const c = CGColorGetComponents([color CGColor]);
  cairo_set_source_rgba(cairo, c[0], c[1], c[2], c[3]);
}

static void draw(cairo_t* cairo, UIView* view) {
  const CGRect bounds = [view bounds];
  cairo_rectangle(cairo, bounds.origin.x, bounds.origin.y, bounds.size.width, bounds.size.height);
  if ([view backgroundColor]) {
    setColor(cairo, [view backgroundColor]);
    cairo_fill_preserve(cairo);
  }
  cairo_new_path(cairo);
  NSString* const text = [view shownText];
  if (text) {
    cairo_set_source_rgb(cairo, 0, 0, 0);
    cairo_set_font_size(cairo, 17);
    cairo_move_to(cairo, bounds.origin.x + 4, bounds.origin.y + bounds.size.height / 2 + 6);
    cairo_show_text(cairo, [text UTF8String]);
    cairo_new_path(cairo);
  }
  for (UIView* below in [view subviews]) {
    if ([below isHidden]) continue;
    const CGPoint origin = [below frame].origin;
    const CGPoint scrolled = [below bounds].origin;
    cairo_save(cairo);
    cairo_translate(cairo, origin.x - scrolled.x, origin.y - scrolled.y);
    draw(cairo, below);
    cairo_restore(cairo);
  }
  const CGFloat width = [[view layer] borderWidth];
  if (width > 0) {
    UIColor* const color = (UIColor*)[[view layer] borderColor];
    setColor(cairo, color ? color : [UIColor blackColor]);
    cairo_set_line_width(cairo, width);
    cairo_rectangle(cairo, bounds.origin.x + width / 2, bounds.origin.y + width / 2,
                    bounds.size.width - width, bounds.size.height - width);
    cairo_stroke(cairo);
  }
}

void DrawView(UIView* view, CGRect rect) {
  UIImage* const target = current();
  const double scale = [target scale];
  cairo_t* const cairo = cairo_create([target surface]);
  cairo_scale(cairo, scale, scale);
  cairo_translate(cairo, -rect.origin.x, -rect.origin.y);
  @try {
    draw(cairo, view);
  } @finally {
    cairo_destroy(cairo);
  }
}

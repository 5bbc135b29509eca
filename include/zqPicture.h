/**
 * @file zqPicture.h
 * @brief Pictures of any of the usual formats made into pictures of any other, with the right colours.
 *
 * A picture is a view of memory that the caller owns. A conversion is described once; the converter made from the
 * description is constant afterwards, may be used by any number of threads at once and allocates nothing. A call
 * converts a whole picture, or a band of its lines; any bands give the same bytes. Nothing outside the given memory is
 * read or written, whatever the description and the views say.
 *
 * The header is self-contained and reads as C99 and as C++; zqPicture.hpp is C++20 on top of it. docs/picture.md says
 * which samples and weights make a pixel.
 */
#ifndef ZQ_PICTURE_H
#define ZQ_PICTURE_H

#include <stddef.h>
#include <stdint.h>

#if defined(ZQP_BUILDING) && defined(_WIN32)
#define ZQP_API
#elif defined(ZQP_BUILDING) && defined(__GNUC__)
#define ZQP_API __attribute__((visibility("default")))
#else
#define ZQP_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @name Version of this header
 * @{ */
#define ZQP_VERSION_MAJOR 0
#define ZQP_VERSION_MINOR 1
#define ZQP_VERSION_PATCH 0
/** @} */

/** The longest side of a picture, in pixels. */
#define ZQP_MOST_PIXELS 32768

/** @brief What every function but zqpErrorText and zqpConverterFree returns. */
typedef enum ZqpError {
  ZQP_OK = 0,
  ZQP_ERR_NULL = 1,        /**< A pointer is null. */
  ZQP_ERR_RECORD = 2,      /**< A record's recordSize is not one that this library knows. */
  ZQP_ERR_FORMAT = 3,      /**< A format that does not exist, or an input format as output. */
  ZQP_ERR_SIZE = 4,        /**< A side below 1 or above ZQP_MOST_PIXELS. */
  ZQP_ERR_CROP = 5,        /**< The crop or part does not lie in the picture, or begins inside a chroma sample. */
  ZQP_ERR_ORIENTATION = 6, /**< Not one of the eight orientations. */
  ZQP_ERR_FILTER = 7,      /**< Not one of the filters. */
  ZQP_ERR_COLOURS = 8,     /**< Matrix, range, siting, or Kr and Kb, cannot be. */
  ZQP_ERR_DITHER = 9,      /**< Not one of the dithers. */
  ZQP_ERR_MEMORY = 10,     /**< The converter could not be allocated. */
  ZQP_ERR_VIEW = 11,       /**< Format or size of a view are not those of the conversion. */
  ZQP_ERR_STRIDE = 12,     /**< A stride is shorter than a line. */
  ZQP_ERR_PLANE = 13,      /**< A plane is null or its memory too small for its lines. */
  ZQP_ERR_OVERLAP = 14,    /**< Output memory overlaps input memory or another output plane. */
  ZQP_ERR_LINES = 15       /**< The band does not lie in the output picture. */
} ZqpError;

/** @brief A sentence that says what an error means; never null. */
ZQP_API const char *zqpErrorText(int32_t error);

/**
 * @brief Formats of pictures; the numbers are the interface.
 *
 * Planes in the order of their memory. w and h are the picture's size; chroma planes are rounded up: (w+1)/2 and so on.
 * U is Cb, V is Cr. Packed 4:2:2 holds (w+1)/2 groups of four bytes a line.
 */
typedef enum ZqpFormat {
  ZQP_I420 = 1,            /**< Y; U, V: (w+1)/2 x (h+1)/2. */
  ZQP_YV12 = 2,            /**< As I420 with V before U. */
  ZQP_NV12 = 3,            /**< Y; pairs U V: (w+1)/2 x (h+1)/2. */
  ZQP_NV21 = 4,            /**< As NV12 with V before U. */
  ZQP_I422 = 5,            /**< Y; U, V: (w+1)/2 x h. */
  ZQP_I444 = 6,            /**< Y, U, V: w x h. */
  ZQP_GREY = 7,            /**< Y alone. */
  ZQP_YUYV = 8,            /**< Bytes Y0 U Y1 V. */
  ZQP_UYVY = 9,            /**< Bytes U Y0 V Y1. */
  ZQP_YVYU = 10,           /**< Bytes Y0 V Y1 U. */
  ZQP_VYUY = 11,           /**< Bytes V Y0 U Y1. */
  ZQP_RGB565 = 12,         /**< Little-endian words: red bits 11-15, green 5-10, blue 0-4. */
  ZQP_RGB565_SWAPPED = 13, /**< The same words, big-endian. */
  ZQP_RGB24 = 14,          /**< Bytes R G B. */
  ZQP_BGR24 = 15,          /**< Bytes B G R. */
  ZQP_RGBA = 16,           /**< Bytes R G B A. */
  ZQP_BGRA = 17,           /**< Bytes B G R A. */
  ZQP_I440 = 18,           /**< Input only. Y; U, V: w x (h+1)/2. */
  ZQP_I411 = 19,           /**< Input only. Y; U, V: (w+3)/4 x h. */
  ZQP_QUARTER_HEIGHT = 20, /**< Input only. Y; U, V: w x (h+3)/4. */
  ZQP_YUYV2 = 21,          /**< Input only. Bytes Y1 U Y0 V. */
  ZQP_UYVY2 = 22,          /**< Input only. Bytes U Y1 V Y0. */
  ZQP_YVYU2 = 23,          /**< Input only. Bytes Y1 V Y0 U. */
  ZQP_VYUY2 = 24,          /**< Input only. Bytes V Y1 U Y0. */
  ZQP_RGB_PLANES = 25      /**< Input only. Planes R, G, B: w x h. */
} ZqpFormat;

/** @brief The memory of a plane. */
typedef struct ZqpPlane {
  void *data;       /**< Its lowest address, of any alignment. Planes of inputs are not written. */
  ptrdiff_t stride; /**< Bytes from a line to the next. Negative: the first line is the last one in memory. */
  size_t bytes;     /**< How many bytes from data on are the plane's. What lies behind the last line's last pixel may be
                         missing. */
} ZqpPlane;

/** @brief A view of a picture. It owns nothing. */
typedef struct ZqpPicture {
  uint32_t recordSize; /**< sizeof(ZqpPicture) of the header that the caller was compiled with. */
  int32_t format;      /**< A ZqpFormat. */
  int32_t width;       /**< In pixels. */
  int32_t height;
  ZqpPlane planes[3]; /**< As many as the format has; the others are not looked at. */
} ZqpPicture;

/**
 * @brief How many bytes a picture takes whose planes follow one another.
 * @param strideAlignment strides are rounded up to a multiple of this; a power of two up to 4096, 1 for none.
 * @param[out] bytes set if ZQP_OK is returned.
 * @return ZQP_ERR_FORMAT, ZQP_ERR_SIZE, ZQP_ERR_STRIDE (the alignment), ZQP_ERR_NULL.
 */
ZQP_API int32_t zqpPictureBytes(int32_t format, int32_t width, int32_t height, uint32_t strideAlignment, size_t *bytes);

/**
 * @brief Makes a view of a picture whose planes follow one another from @p memory on, with strides as
 * zqpPictureBytes() has them.
 * @param[out] picture written as a whole if ZQP_OK is returned; its recordSize must be set beforehand.
 * @return as zqpPictureBytes(); ZQP_ERR_RECORD; ZQP_ERR_PLANE if @p memory is null or @p bytes too few.
 */
ZQP_API int32_t zqpPictureLayOut(ZqpPicture *picture, int32_t format, int32_t width, int32_t height,
                                 uint32_t strideAlignment, void *memory, size_t bytes);

/**
 * @brief Makes a view of a rectangle of a picture.
 *
 * The rectangle begins on a whole chroma sample (even columns and lines for 4:2:0). Where it ends inside one, the part
 * has that sample; as an output it is written.
 * @param[out] part may be @p picture itself; its recordSize must be set beforehand.
 * @return ZQP_ERR_NULL, ZQP_ERR_RECORD, ZQP_ERR_FORMAT, ZQP_ERR_SIZE, ZQP_ERR_CROP; ZQP_ERR_STRIDE and ZQP_ERR_PLANE
 * if the picture's planes do not hold it.
 */
ZQP_API int32_t zqpPicturePart(const ZqpPicture *picture, int32_t x, int32_t y, int32_t width, int32_t height,
                               ZqpPicture *part);

/** @brief Kr and Kb of Y = Kr R + (1 - Kr - Kb) G + Kb B. */
typedef enum ZqpMatrix {
  ZQP_BT601 = 0,       /**< .299 and .114, ITU-R BT.601. */
  ZQP_BT709 = 1,       /**< .2126 and .0722, ITU-R BT.709. */
  ZQP_BT2020 = 2,      /**< .2627 and .0593, ITU-R BT.2020, non-constant luminance. */
  ZQP_MATRIX_GIVEN = 3 /**< kr and kb of the record: both above 0, together at most .8. */
} ZqpMatrix;

/** @brief Which numbers stand for black and white. */
typedef enum ZqpRange {
  ZQP_RANGE_USUAL = 0,   /**< Limited for YUV and grey, full for RGB. */
  ZQP_RANGE_LIMITED = 1, /**< Luma and RGB 16 to 235, chroma 16 to 240. */
  ZQP_RANGE_FULL = 2     /**< 0 to 255. */
} ZqpRange;

/** @brief Where a chroma sample of subsampled columns stands. Lines: always midway between those that share it. */
typedef enum ZqpSiting {
  ZQP_SITING_LEFT = 0,  /**< On the first of the columns that share it: MPEG-2, H.264, H.265. */
  ZQP_SITING_CENTRE = 1 /**< Midway between them: JPEG, MPEG-1. */
} ZqpSiting;

/**
 * @brief What the numbers of a picture mean. Of RGB the range counts alone, of grey matrix and range; the others must
 * be valid all the same.
 */
typedef struct ZqpColours {
  int32_t matrix; /**< A ZqpMatrix. */
  int32_t range;  /**< A ZqpRange. */
  int32_t siting; /**< A ZqpSiting. */
  float kr;       /**< Of ZQP_MATRIX_GIVEN. */
  float kb;
} ZqpColours;

/** @brief How pixels are made where sizes differ, and chroma where it is enlarged. */
typedef enum ZqpFilter {
  ZQP_FILTER_BILINEAR = 0, /**< The two nearest samples each way, by distance. */
  ZQP_FILTER_NEAREST = 1,  /**< The nearest sample. */
  ZQP_FILTER_AREA = 2      /**< The mean of what a pixel covers; bilinear where it enlarges. */
} ZqpFilter;

/** @brief How components become the 5 and 6 bits of RGB565. */
typedef enum ZqpDither {
  ZQP_DITHER_NONE = 0,   /**< By rounding. */
  ZQP_DITHER_ORDERED = 1 /**< By an 8 x 8 pattern of thresholds that depends on the output position alone. */
} ZqpDither;

/** @brief A rectangle of pixels. */
typedef struct ZqpRect {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
} ZqpRect;

/** @brief A conversion. zqpConversionInit() fills it with what is usual. */
typedef struct ZqpConversion {
  uint32_t recordSize; /**< sizeof(ZqpConversion) of the header that the caller was compiled with. */
  int32_t inFormat;    /**< A ZqpFormat. */
  int32_t inWidth;     /**< Of the whole input picture. */
  int32_t inHeight;
  ZqpRect crop;      /**< What is converted of it, at any place; width and height 0: all of it. */
  int32_t outFormat; /**< A ZqpFormat that is not input only. */
  int32_t outWidth;  /**< Of the finished picture, as one sees it. */
  int32_t outHeight;
  int32_t orientation;  /**< What turns the input upright, as EXIF numbers it: 1 nothing, 2 mirrored left to right, 3
                           half  a turn, 4 mirrored top to bottom, 5 mirrored along the main diagonal, 6 a quarter turn
                             clockwise, 7 mirrored along the other diagonal, 8 a quarter turn anticlockwise. 0 is 1. */
  int32_t filter;       /**< A ZqpFilter. */
  int32_t dither;       /**< A ZqpDither; counts where the output is RGB565. */
  ZqpColours inColours; /**< Of the input. */
  ZqpColours outColours;
} ZqpConversion;

/**
 * @brief Sets a description to: no format and size yet, the whole input, orientation 1, bilinear, no dither, BT.601,
 * the usual ranges, chroma to the left.
 * @param[out] conversion its recordSize must be set beforehand.
 * @return ZQP_ERR_NULL, ZQP_ERR_RECORD.
 */
ZQP_API int32_t zqpConversionInit(ZqpConversion *conversion);

/** @brief What converts pictures as described: constant, for any number of threads at once. */
typedef struct ZqpConverter ZqpConverter;

/**
 * @brief Makes a converter. The only function that allocates.
 * @param[out] converter owned by the caller, who hands it to zqpConverterFree(); null unless ZQP_OK is returned.
 * @return ZQP_ERR_NULL, ZQP_ERR_RECORD, ZQP_ERR_FORMAT, ZQP_ERR_SIZE, ZQP_ERR_CROP, ZQP_ERR_ORIENTATION,
 * ZQP_ERR_FILTER, ZQP_ERR_COLOURS, ZQP_ERR_DITHER, ZQP_ERR_MEMORY.
 */
ZQP_API int32_t zqpConverterMake(const ZqpConversion *conversion, ZqpConverter **converter);

/** @brief Frees a converter; null is fine. */
ZQP_API void zqpConverterFree(ZqpConverter *converter);

/**
 * @brief Converts a picture. Nothing is written unless ZQP_OK is returned.
 * @param in the whole input picture, of the described format and size.
 * @param out of the described format and size. Its memory overlaps neither the input's nor that of another plane.
 * @return ZQP_ERR_NULL, ZQP_ERR_RECORD, ZQP_ERR_VIEW, ZQP_ERR_STRIDE, ZQP_ERR_PLANE, ZQP_ERR_OVERLAP.
 */
ZQP_API int32_t zqpConvert(const ZqpConverter *converter, const ZqpPicture *in, const ZqpPicture *out);

/**
 * @brief Converts lines @p firstLine to @p firstLine + @p lineCount - 1 of the output.
 *
 * Bands may be converted in any order and by different threads at once; together they give what zqpConvert() gives. A
 * line of chroma is made with the first of the lines that share it.
 * @return as zqpConvert(); ZQP_ERR_LINES. No lines are ZQP_OK.
 */
ZQP_API int32_t zqpConvertLines(const ZqpConverter *converter, const ZqpPicture *in, const ZqpPicture *out,
                                int32_t firstLine, int32_t lineCount);

#ifdef __cplusplus
}
#endif

#endif /* ZQ_PICTURE_H */

/**
 * @file zqColorConversion.h
 * @brief Colour conversion of decoded pictures: YUV and RGB in, display formats out.
 *
 * One picture per call, optionally resized, turned, flipped or cut out of a larger picture. All work happens inside
 * the caller's call, on buffers that the caller owns. The header is self-contained and reads as C99 and as C++.
 *
 * Two styles of use:
 *  - the handle interface (zqCCInit, zqCCSetParameter, zqCCProcess, zqCCUninit) describes a conversion once, has its
 *    tables and scratch planes made, and then converts frame after frame without allocating;
 *  - the one-shot functions convert a single picture.
 *
 * Threads: conversions on different handles may run at the same time as long as nobody changes the colour matrix
 * meanwhile. The matrix is one for the whole process; zqCCInit, zqCCSetParameter (matrix parameters) and every
 * one-shot function set it. One handle serves one thread at a time.
 */
#ifndef ZQ_COLOR_CONVERSION_H
#define ZQ_COLOR_CONVERSION_H

#include <stdint.h>

#if defined(ZQCC_BUILDING) && defined(_WIN32)
#define ZQ_API
#elif defined(ZQCC_BUILDING) && defined(__GNUC__)
#define ZQ_API __attribute__((visibility("default")))
#else
#define ZQ_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** @name Version of this header
 * @{ */
#define ZQCC_VERSION_MAJOR 0
#define ZQCC_VERSION_MINOR 1
#define ZQCC_VERSION_PATCH 0
/** @} */

/**
 * @name Result codes
 * Every function returns one of these 32-bit codes.
 * @{ */
#define CC_OK                    UINT32_C(0)          /**< Success. */
#define CC_ERR_ARGUMENT          UINT32_C(0x80000002) /**< A null pointer, mode field or size that cannot be. */
#define CC_ERR_NO_MEMORY         UINT32_C(0x80000005) /**< zqCCInit or set-up could not allocate. */
#define CC_ERR_NO_MEMORY_ONESHOT UINT32_C(0x80000006) /**< A one-shot function could not allocate its context. */
#define CC_ERR_PARAM_ID          UINT32_C(0x80000007) /**< zqCCSetParameter: unknown identifier. */
#define CC_ERR_IN_TYPE           UINT32_C(0x81E00001) /**< The input type is not accepted here. */
#define CC_ERR_OUT_TYPE          UINT32_C(0x81E00002) /**< No route leads to the output type. */
#define CC_ERR_UNINIT            UINT32_C(0x81E00005) /**< Destroying a context failed (never seen in practice). */
#define CC_ERR_SAME_TYPE                                                                                               \
  UINT32_C(0x81E00006) /**< zqColorConvert: both types equal; zqYUV422PacktoRGB16Rotate:                               \
                            the input is not packed 4:2:2. */
/** @} */

/**
 * @name Parameter identifiers of zqCCSetParameter
 * @{ */
#define PARAM_CONVERT_DESC  UINT32_C(0x40E00001) /**< value: ConvertParams *; prepares the handle for it. */
#define PARAM_COLOR_MATRIX  UINT32_C(0x40E00002) /**< value: an index 0..3 cast to a pointer. */
#define PARAM_CUSTOM_MATRIX UINT32_C(0x40E00003) /**< value: const double[4]. */
/** @} */

/**
 * @brief Entries of PARAM_COLOR_MATRIX.
 *
 * A conversion from YUV to RGB either expands limited range, luma 16 to 235, to black and white by a BT.601 of its own
 * and ignores the matrix, or takes luma as it is, full range, and chroma by the matrix in force:
 *
 *   input                 to 16-bit RGB                             to RGB24
 *   --------------------  ----------------------------------------  -------------------------------------------
 *   3, 12, 11, 35, 1, 13  limited, BT.601 [1]; flip: full, matrix   limited, BT.601; flip, resize: full, matrix [2]
 *   0, 2, 4, 37           turned or resized: limited, BT.601; flip  limited, BT.601; flip, resize: full, matrix [2]
 *                         and upright same size: full, matrix
 *   packed 4:2:2          full, matrix                              full, matrix [2]
 *   34, 32                RGB already: low bits are dropped         34: taken for YUV, as 0
 *
 * [1] Upright at the same size, the columns and lines behind the last whole 16 stay in video range: black is 2, 4, 2
 *     and white 29, 58, 29 (red, green, blue, of 31, 63, 31), as limited range becomes under "full, matrix".
 * [2] Components are held in 16..235: black is 16, white 235.
 *
 * No other conversion looks at the matrix or at ranges: it copies or resamples what is there.
 */
typedef enum ColorMatrixIndex {
  MATRIX_BT601 = 0, /**< ITU-R BT.601; what zqCCInit and every one-shot function select. */
  MATRIX_BT709 = 1, /**< ITU-R BT.709. */
  MATRIX_GREY = 2,  /**< All coefficients zero: the picture comes out grey. */
  MATRIX_CUSTOM = 3 /**< The entry that PARAM_CUSTOM_MATRIX writes. */
} ColorMatrixIndex;

/**
 * @brief Colour types; the numbers are the interface.
 *
 * "s" is the stride of the first plane in bytes, "w" and "h" the picture's size. U is Cb, V is Cr. Where a plane is
 * subsampled, w/2, w/4, h/2 and h/4 drop the remainder; a picture so small that a plane would hold no sample is
 * refused.
 */
typedef enum ColorType {
  COLOR_YUV444_PLANAR = 0,      /**< Planar Y, U, V; chroma w x h, stride s. Input only. */
  COLOR_YUV422_PLANAR = 1,      /**< Planar; chroma w/2 x h, stride s/2. Input only. */
  COLOR_YUV440_PLANAR = 2,      /**< Planar; chroma lines of w bytes, h/2 lines, stride s. Input only. */
  COLOR_YUV420_PLANAR = 3,      /**< Planar; chroma w/2 x h/2, stride s/2. */
  COLOR_YUV411_PLANAR = 4,      /**< Planar; chroma w/4 x h, stride s/4. Input only. */
  COLOR_YUV422_YUYV = 6,        /**< Packed 4:2:2, bytes Y0 U Y1 V; 2 bytes a pixel. */
  COLOR_YUV422_YVYU = 7,        /**< Packed 4:2:2, bytes Y0 V Y1 U. */
  COLOR_YUV422_UYVY = 8,        /**< Packed 4:2:2, bytes U Y0 V Y1. */
  COLOR_YUV422_VYUY = 9,        /**< Packed 4:2:2, bytes V Y0 U Y1. */
  COLOR_YUV420_PACK = 11,       /**< Semi-planar 4:2:0: Y, then h/2 lines of U V pairs, both with stride s. Without a
                                     change of type a line of odd width holds (w + 1)/2 pairs, as far as s goes. */
  COLOR_YVU420_PLANAR = 12,     /**< As 3 with V as the second and U as the third plane. Conversions from another
                                     type put U into outBuf[1] and V into outBuf[2] all the same. */
  COLOR_YVU422_PLANAR = 13,     /**< As 1 with V as the second and U as the third plane. Input only. */
  COLOR_YUV422_YUYV2 = 14,      /**< Packed 4:2:2, bytes Y1 U Y0 V. */
  COLOR_YUV422_YVYU2 = 15,      /**< Packed 4:2:2, bytes Y1 V Y0 U. */
  COLOR_YUV422_UYVY2 = 16,      /**< Packed 4:2:2, bytes U Y1 V Y0. */
  COLOR_YUV422_VYUY2 = 17,      /**< Packed 4:2:2, bytes V Y1 U Y0. */
  COLOR_RGB565 = 30,            /**< 16-bit RGB, little-endian words: red bits 11-15, green 5-10, blue 0-4. */
  COLOR_RGB16_ALT = 31,         /**< A second code for the same 16-bit words. */
  COLOR_RGB24 = 32,             /**< Bytes B, G, R; 3 bytes a pixel. As input, to RGB565 only. */
  COLOR_RGB888_PLANAR = 34,     /**< Planes red, green, blue, each w x h, stride s. Input only. */
  COLOR_YUV420_PACK2 = 35,      /**< As 11 with V before U in each pair. */
  COLOR_YUV_QUARTER_HEIGHT = 37 /**< Planar; chroma lines of w bytes, h/4 lines, stride s. Input only. */
} ColorType;

/**
 * @brief Rotation codes. Codes 0, 1 and 7 are accepted and act as ROTATION_NONE.
 *
 * A code that a conversion does not have is left out, and the picture comes out upright:
 *  - quarter turns: planar and semi-planar input to RGB24 and 4:2:0 (resized, types 0, 2, 4 and 37 are turned), packed
 *    4:2:2 to 4:2:0;
 *  - half turns: everything to 4:2:0; planar and semi-planar input to RGB24; RGB24 to 30; types 0, 2, 4 and 37 resized;
 *    without a change of type all but 3 and 12;
 *  - flips: all but those named below.
 */
typedef enum RotationType {
  ROTATION_NONE = 2,     /**< Upright. */
  ROTATION_90_LEFT = 3,  /**< Quarter turn anticlockwise: the first pixel lands at the start of the last line. */
  ROTATION_90_RIGHT = 4, /**< Quarter turn clockwise: the first pixel lands at the end of the first line. A strip may
                              lie at the end of the stride: see ConvertParams. */
  ROTATION_180 = 5,      /**< Half turn. To 16-bit RGB it lies at the end of the stride: see ConvertParams. */
  ROTATION_FLIP_V = 6    /**< Top-bottom flip; only for planar input to RGB (to RGB24 without resizing). */
} RotationType;

/**
 * @brief Description of one conversion, and of one frame; the caller owns the record and every buffer it names.
 *
 * No plane and no stride needs any alignment. The stride of subsampled chroma planes is never passed: it is the
 * first plane's stride halved or quartered by a right shift, as ColorType says.
 *
 * @par Bytes written
 * No byte is written outside these, counted from each pointer in outBuf. Short: w = outWidth, h = outHeight,
 * s = outStride, and line(n) for the bytes of n pixels: 2n in 16-bit RGB, 3n in RGB24, n in a plane of samples; in
 * packed 4:2:2 4 * ((n + 1) / 2), or 2n where a stride has no room for that.
 *
 *   picture                                                        first byte    behind the last byte
 *   -------------------------------------------------------------  ------------  ----------------------
 *   upright, flipped, or half turned but for those below           0             (h - 1) * s + line(w)
 *   quarter turned, but for those below                            0             (w - 1) * s + line(h)
 *   to 16-bit RGB at the same size from planar or semi-planar:
 *     half turn                                                    s - 2w [1]    h * s
 *     right turn, w and h at least 16, w no multiple of 16         0             w * s
 *   half turn of packed 4:2:2 to 16-bit RGB at the same size       s - 2w        h * s
 *   half turn of 1, 3, 11, 12, 13, 34, 35 to 16-bit RGB, resized   s - 2w        h * s
 *   3 and 12 without a change of type, half turned and resized     s - w         h * s
 *   3 and 12 without a change of type, turned and not resized      0             inWidth * inHeight [2]
 *
 * [1] 0 where w and h are at least 16 and w is no multiple of 16: the columns behind the last whole 16 lie at the start
 *     of the lines.
 * [2] Lines are tight whatever the strides, of the input too.
 *
 * Chroma planes of 4:2:0: the same with w / 2, h / 2, s >> 1, inWidth / 2 and inHeight / 2. Chroma pairs of 11 and 35:
 * up to (h / 2 - 1) * s + 2 * ((w + 1) / 2), cut at the stride's end; quarter turned (w / 2 - 1) * s + 2 * (h / 2).
 *
 * Rows that end at h * s or w * s use the whole stride of their last line. With outBuf[0] moved x bytes to the right in
 * a wider buffer they reach x bytes into the line below, behind the last line of the buffer too: give them a pointer to
 * the start of a line, or a buffer of their own. In all other rows each line stays within line(w) or line(h) bytes.
 *
 * Made taller, RGB24 from planar and semi-planar input leaves the first bytes of each repeated line as they were: as
 * many as w rounded up to a multiple of 4.
 *
 * @par Part of a picture
 * To convert the part that begins at column x of line y, give its size as inWidth and inHeight, leave inStride (t) as
 * it is, and move the planes. x and y must be multiples of what the chroma asks for:
 *
 *   input         x  y   inBuf[0] +=   chroma planes +=
 *   ------------  -  -   -----------   ----------------------------
 *   3, 12         2  2   y * t + x     (y / 2) * (t >> 1) + x / 2
 *   11, 35        2  2   y * t + x     (y / 2) * t + x
 *   1, 13         2  1   y * t + x     y * (t >> 1) + x / 2
 *   0, 34         1  1   y * t + x     y * t + x
 *   2             1  2   y * t + x     (y / 2) * t + x
 *   4             4  1   y * t + x     y * (t >> 2) + x / 4
 *   37            1  4   y * t + x     (y / 4) * t + x
 *   packed 4:2:2  2  1   y * t + 2x    -
 *   30, 31        1  1   y * t + 2x    -
 *   32            1  1   y * t + 3x    -
 *
 * Not so where planes are read by other pitches than their own: turns of 3 and 12 without a change of type and without
 * resizing (isResize 1 with equal sizes gives the same picture by the strides), and 0, 2, 4, 34 and 37 to RGB24 and
 * 4:2:0.
 */
typedef struct ConvertParams {
  int32_t inType;          /**< ColorType of the input. */
  int32_t inWidth;         /**< Input width in pixels. */
  int32_t inHeight;        /**< Input height in lines. */
  int32_t inStride;        /**< Bytes from one line of the first input plane to the next; not negative. */
  const uint8_t *inBuf[3]; /**< Input planes; Y and chroma pairs for semi-planar; only [0] for packed and RGB. */
  int32_t outType;         /**< ColorType of the output. */
  int32_t outWidth;        /**< Output width in pixels, counted in the input's orientation: after a quarter turn the
                                written picture is outHeight pixels wide and outWidth lines high. */
  int32_t outHeight;       /**< Output height in lines, same convention. */
  int32_t outStride;       /**< Bytes from one line of the first output plane to the next; not negative, and no shorter
                                than a line where the picture lies at its end. */
  uint8_t *outBuf[3];      /**< Output planes, arranged as the input's; "Bytes written" above says how far each must
                                reach. */
  uint32_t isResize;       /**< 0: no scaling; 1: scale from the input size to the output size. */
  uint32_t rotation;       /**< RotationType, 0..7. */
  uint32_t antiAlias;      /**< Quality of resampling: 0 plain; 1 and 2 five weighted taps, narrower and wider; 3 the
                                mean of a box, for reducing only: those of an enlarged side are empty and count as 0
                                (conversions only). It counts when resizing planar and semi-planar input to 16-bit RGB
                                without a turn or flip (0, 2, 4 and 37: without a flip), and 3, 12, 30, 31 and 6 to 9
                                in their own type without a quarter turn. Elsewhere 1 to 3 change nothing, or are
                                refused: in their own type, turns of 3 and 12, quarter turns of 30 and 31, and these
                                four not resized; 3 without a change of type. */
} ConvertParams;

/** @brief The object behind a handle; made by zqCCInit, released by zqCCUninit. */
typedef struct ConvertContext ConvertContext;

/**
 * @brief Makes a context and selects the BT.601 matrix for the whole process.
 * @param handle receives the context, or null on failure. The caller releases it with zqCCUninit.
 * @return CC_OK, CC_ERR_ARGUMENT (null @p handle) or CC_ERR_NO_MEMORY.
 */
ZQ_API uint32_t zqCCInit(ConvertContext **handle);

/**
 * @brief Sets one parameter of a handle.
 *
 * - PARAM_CONVERT_DESC: @p value is a ConvertParams * (its plane pointers are not read). Validates it and makes the
 *   tables and scratch planes that its frames need, releasing those of an earlier call. On CC_ERR_NO_MEMORY the
 *   context itself has been released: the handle is dead and must not be used again, not even with zqCCUninit.
 * - PARAM_COLOR_MATRIX: @p value is an index 0..3 (ColorMatrixIndex) cast to a pointer.
 * - PARAM_CUSTOM_MATRIX: @p value points to four doubles (Cr to R, Cr to G, Cb to B, Cb to G), each stored as
 *   value * 2048 truncated (0 for NaN, saturated to 32 bits) in the custom entry, which becomes current. The
 *   converters divide by 2^20, so a custom value weighs 1/512 of the same value in a built-in entry.
 *
 * @return CC_OK, CC_ERR_ARGUMENT, CC_ERR_NO_MEMORY (PARAM_CONVERT_DESC) or CC_ERR_PARAM_ID; nothing changes on an
 *   argument error.
 */
ZQ_API uint32_t zqCCSetParameter(ConvertContext *handle, uint32_t id, void *value);

/**
 * @brief Converts one frame.
 *
 * The record must describe the conversion that PARAM_CONVERT_DESC prepared if it resizes or has semi-planar input
 * converted to another type; other frames need no preparation. Strides and planes may differ from frame to frame.
 *
 * For input types 12 and 13 converted to another type, inBuf[1] and inBuf[2] of the caller's record are exchanged in
 * place: set them again before each call.
 *
 * @return CC_OK, or CC_ERR_ARGUMENT, CC_ERR_IN_TYPE or CC_ERR_OUT_TYPE with nothing written.
 */
ZQ_API uint32_t zqCCProcess(ConvertContext *handle, ConvertParams *params);

/**
 * @brief Releases a context and everything it owns.
 * @return CC_OK, or CC_ERR_ARGUMENT for a null handle.
 */
ZQ_API uint32_t zqCCUninit(ConvertContext *handle);

/**
 * @name One-shot functions
 *
 * Each converts one picture through a temporary context and selects the BT.601 matrix for the whole process. Planes
 * follow one another in a single buffer without gaps: with stride s, U at Y + h*s and V at U + (h*s)/4 for 4:2:0,
 * U at Y + h*s and V at U + (h*s)/2 for 4:2:2 planar, the chroma pairs at Y + h*s for semi-planar. Lines are tight
 * (stride = width in bytes) unless an argument says otherwise. All return the codes above; on an error nothing is
 * written. A part that leaves its picture is CC_ERR_ARGUMENT.
 *
 * A packed 4:2:2 line of odd width ends with a whole group of four bytes when it is converted to another type: behind
 * the last line the buffer then holds two bytes more than its lines. Without a change of type tight lines end behind
 * the lone pixel's two bytes.
 * @{ */

/**
 * @brief Resizes a picture without changing its type (3, 12, packed 4:2:2, 30, 31).
 * @param antiAlias 0..2; non-zero only for types 3, 6, 7, 8, 9 and 30.
 */
ZQ_API uint32_t zqScaleFrame(const uint8_t *input, uint8_t *output, int32_t inWidth, int32_t inHeight, int32_t outWidth,
                             int32_t outHeight, int32_t colorType, int32_t antiAlias);

/**
 * @brief Resizes a part of a picture (types 3, packed 4:2:2, 30, 31).
 * @param pictureWidth,pictureHeight size of the whole input in pixels; its lines are tight.
 * @param cropLeft,cropTop,cropWidth,cropHeight the part, in pixels. The chroma of 4:2:0 is exact for an even cropTop.
 */
ZQ_API uint32_t zqScaleCroppedFrame(const uint8_t *input, uint8_t *output, int32_t pictureWidth, int32_t pictureHeight,
                                    int32_t cropLeft, int32_t cropTop, int32_t cropWidth, int32_t cropHeight,
                                    int32_t outWidth, int32_t outHeight, int32_t colorType, int32_t antiAlias);

/**
 * @brief Turns a picture without changing its type (types 3, packed 4:2:2, 30, 31).
 * @param dimensionA,dimensionB output dimensions in pixels: the output line is dimensionA pixels long for rotation 2
 *   and dimensionB pixels for every other code; the other one counts the lines.
 */
ZQ_API uint32_t zqRotateFrame(const uint8_t *input, uint8_t *output, int32_t width, int32_t height, int32_t dimensionA,
                              int32_t dimensionB, int32_t colorType, int32_t rotation);

/**
 * @brief Turns a part of a picture; arguments as in zqScaleCroppedFrame and zqRotateFrame.
 *
 * Turns of type 3 take the planes for tight, so that the part must be whole lines: cropLeft 0, cropWidth pictureWidth.
 */
ZQ_API uint32_t zqRotateCroppedFrame(const uint8_t *input, uint8_t *output, int32_t pictureWidth, int32_t pictureHeight,
                                     int32_t cropLeft, int32_t cropTop, int32_t cropWidth, int32_t cropHeight,
                                     int32_t dimensionA, int32_t dimensionB, int32_t colorType, int32_t rotation);

/**
 * @brief Converts a picture to another type at the same size.
 * @param inType 1, 3, 11, 35 or packed 4:2:2; @param outType 3, 12, 30, 31 or 32.
 * @param inStride bytes per input line (ignored for packed 4:2:2, whose lines are tight).
 * @param coefficients null, or four doubles as for PARAM_CUSTOM_MATRIX; the custom matrix stays selected afterwards.
 *   Only packed 4:2:2 to RGB heeds it; the other input types are converted by BT.601 all the same.
 */
ZQ_API uint32_t zqColorConvert(const uint8_t *input, uint8_t *output, int32_t inType, int32_t outType, int32_t width,
                               int32_t height, int32_t inStride, const double *coefficients);

/**
 * @brief Converts a part of a planar 4:2:0 picture (type 3) to a place in an RGB565 picture, turned.
 * @param inStride bytes per input line; @param pictureHeight lines of the whole input picture.
 * @param outStridePixels output line length in pixels; @param outLeft,outTop place of the result, in pixels; the bytes
 *   written count from there (see ConvertParams). Rotation 5, and parts of rotation 4, are placed from the end of a
 *   whole line counted from there, and reach 2 * outLeft bytes into the line below: give them outLeft 0.
 * @param ignored never read.
 */
ZQ_API uint32_t zqYUV420PlanartoRGB16Rotate(const uint8_t *input, uint8_t *output, int32_t inStride,
                                            int32_t pictureHeight, int32_t cropLeft, int32_t cropTop, int32_t width,
                                            int32_t height, int32_t ignored, int32_t outStridePixels, int32_t outLeft,
                                            int32_t outTop, int32_t rotation);

/**
 * @brief Converts a part of a packed 4:2:2 picture to a place in an RGB565 picture, turned.
 * @param inStridePixels input line length in pixels.
 * @param cropLeft is counted in bytes, not in pixels: pass an even number of pixels times two.
 * @param ignored1,ignored2 never read.
 */
ZQ_API uint32_t zqYUV422PacktoRGB16Rotate(int32_t inType, const uint8_t *input, uint8_t *output, int32_t inStridePixels,
                                          int32_t ignored1, int32_t cropLeft, int32_t cropTop, int32_t width,
                                          int32_t height, int32_t ignored2, int32_t outStridePixels, int32_t outLeft,
                                          int32_t outTop, int32_t rotation);

/** @brief As zqYUV420PlanartoRGB16Rotate for semi-planar input with U before V (type 11). */
ZQ_API uint32_t zqYUV420PacktoRGB16Rotate(const uint8_t *input, uint8_t *output, int32_t inStride,
                                          int32_t pictureHeight, int32_t cropLeft, int32_t cropTop, int32_t width,
                                          int32_t height, int32_t ignored, int32_t outStridePixels, int32_t outLeft,
                                          int32_t outTop, int32_t rotation);

/** @brief As zqYUV420PacktoRGB16Rotate for semi-planar input with V before U (type 35). */
ZQ_API uint32_t zqYUV420Pack2toRGB16Rotate(const uint8_t *input, uint8_t *output, int32_t inStride,
                                           int32_t pictureHeight, int32_t cropLeft, int32_t cropTop, int32_t width,
                                           int32_t height, int32_t ignored, int32_t outStridePixels, int32_t outLeft,
                                           int32_t outTop, int32_t rotation);
/** @} */

#ifdef __cplusplus
}
#endif

#endif /* ZQ_COLOR_CONVERSION_H */

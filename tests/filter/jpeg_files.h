// JPEG files of any form, made by libjpeg.
#ifndef TESTS_FILTER_JPEG_FILES_H
#define TESTS_FILTER_JPEG_FILES_H

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

namespace zorvan::filter {

struct JpegForm {
    unsigned int width = 8;
    unsigned int height = 8;
    int components = 3;
    // The transform of the Adobe marker; without such a marker if negative.
    int adobeTransform = -1;
    bool jfif = false;
    bool progressive = false;
    // One scan for each component.
    bool separateScans = false;
    bool arithmetic = false;
    unsigned int restartInterval = 0;
    // How much finer the first component is than the others, each way.
    int sampling = 1;
    // What the components are called, as many letters; their numbers if empty.
    std::string_view names{};
    int quality = 100;
};

// The samples are stored as they are, of whatever colours.
std::string MakeJpeg(const JpegForm& form, std::string_view samples);

// A picture with gradients, edges and some noise.
std::string SamplePicture(const JpegForm& form, std::mt19937& random);
// All pixels alike.
std::string PlainPicture(const JpegForm& form, std::string_view pixel);

// What a file's header tells.
struct JpegHeader {
    unsigned int width = 0;
    unsigned int height = 0;
    int components = 0;
    int adobeTransform = -1;
};
JpegHeader ReadJpegHeader(std::string_view file);

}  // namespace zorvan::filter

#endif

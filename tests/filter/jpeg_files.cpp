// Pictures, and libjpeg told to store them in one way or another.
#include "tests/filter/jpeg_files.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include <jpeglib.h>

namespace zorvan::filter {
namespace {

void ChooseComponents(jpeg_compress_struct& jpeg, const JpegForm& form) {
    for (int i = 0; i < form.components; ++i) {
        jpeg_component_info& component = jpeg.comp_info[i];
        component.h_samp_factor = i == 0 ? form.sampling : 1;
        component.v_samp_factor = component.h_samp_factor;
        if (!form.names.empty()) {
            component.component_id = form.names[static_cast<std::size_t>(i)];
        }
    }
}

void WriteAdobeMarker(jpeg_compress_struct& jpeg, int transform) {
    std::array<JOCTET, 12> bytes = {'A', 'd', 'o', 'b', 'e', 0, 100};
    bytes.back() = static_cast<JOCTET>(transform);
    jpeg_write_marker(&jpeg, JPEG_APP0 + 14, bytes.data(), static_cast<unsigned int>(bytes.size()));
}

std::vector<jpeg_scan_info> ScanOfEach(int components) {
    std::vector<jpeg_scan_info> scans;
    for (int i = 0; i < components; ++i) {
        scans.push_back({1, {i, 0, 0, 0}, 0, 63, 0, 0});
    }
    return scans;
}

}  // namespace

std::string MakeJpeg(const JpegForm& form, std::string_view samples) {
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = form.width;
    jpeg.image_height = form.height;
    jpeg.input_components = form.components;
    jpeg.in_color_space = JCS_UNKNOWN;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, form.quality, TRUE);
    ChooseComponents(jpeg, form);
    jpeg.write_JFIF_header = form.jfif ? TRUE : FALSE;
    jpeg.restart_interval = form.restartInterval;
    jpeg.arith_code = form.arithmetic ? TRUE : FALSE;
    const std::vector<jpeg_scan_info> scans = ScanOfEach(form.components);
    if (form.progressive) {
        jpeg_simple_progression(&jpeg);
    } else if (form.separateScans) {
        jpeg.scan_info = scans.data();
        jpeg.num_scans = form.components;
    }
    jpeg_start_compress(&jpeg, TRUE);
    if (form.adobeTransform >= 0) {
        WriteAdobeMarker(jpeg, form.adobeTransform);
    }
    const std::size_t rowBytes = std::size_t{form.width} * static_cast<std::size_t>(form.components);
    for (std::size_t row = 0; row < form.height; ++row) {
        const std::string_view text = samples.substr(row * rowBytes, rowBytes);
        std::vector<JSAMPLE> line(text.begin(), text.end());
        JSAMPROW pointer = line.data();
        jpeg_write_scanlines(&jpeg, &pointer, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
    std::string file(reinterpret_cast<const char*>(bytes), size);
    std::free(bytes);
    return file;
}

std::string SamplePicture(const JpegForm& form, std::mt19937& random) {
    std::string samples;
    for (unsigned int y = 0; y < form.height; ++y) {
        for (unsigned int x = 0; x < form.width; ++x) {
            for (int i = 0; i < form.components; ++i) {
                const auto component = static_cast<unsigned int>(i);
                const unsigned int edge = (x / 11 + y / 7 + component) % 3 == 0 ? 120 : 0;
                const auto noise = static_cast<unsigned int>(random() % 16);
                samples += static_cast<char>((edge + x * (component + 1) + y + noise) % 256);
            }
        }
    }
    return samples;
}

std::string PlainPicture(const JpegForm& form, std::string_view pixel) {
    std::string samples;
    for (std::size_t i = 0; i < std::size_t{form.width} * form.height; ++i) {
        samples += pixel;
    }
    return samples;
}

JpegHeader ReadJpegHeader(std::string_view file) {
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&jpeg);
    jpeg_mem_src(&jpeg, reinterpret_cast<const unsigned char*>(file.data()), file.size());
    jpeg_read_header(&jpeg, TRUE);
    const JpegHeader header{jpeg.image_width, jpeg.image_height, jpeg.num_components,
                            jpeg.saw_Adobe_marker != FALSE ? jpeg.Adobe_transform : -1};
    jpeg_destroy_decompress(&jpeg);
    return header;
}

}  // namespace zorvan::filter

#include "png_writer.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/win32/unique_handle.h"

namespace corvina::win32 {
namespace {

using Bytes = std::vector<uint8_t>;

uint32_t Crc32(const uint8_t* data, size_t size, uint32_t crc = 0) {
  crc = ~crc;
  for (size_t i = 0; i < size; ++i) {
    crc ^= data[i];
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
  }
  return ~crc;
}

uint32_t Adler32(const Bytes& data) {
  uint32_t a = 1, b = 0;
  for (uint8_t byte : data) {
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  return (b << 16) | a;
}

void PutBig32(Bytes& out, uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<uint8_t>(value >> shift));
}

void PutChunk(Bytes& out, std::string_view type, const Bytes& data) {
  PutBig32(out, static_cast<uint32_t>(data.size()));
  const size_t start = out.size();
  out.insert(out.end(), type.begin(), type.end());
  out.insert(out.end(), data.begin(), data.end());
  PutBig32(out, Crc32(out.data() + start, out.size() - start));
}

// zlib stream of stored (uncompressed) deflate blocks: a screenshot is small enough.
Bytes Zlib(const Bytes& raw) {
  Bytes out{0x78, 0x01};
  size_t at = 0;
  do {
    const size_t n = std::min<size_t>(raw.size() - at, 65535);
    out.push_back(at + n == raw.size() ? 1 : 0);
    out.push_back(static_cast<uint8_t>(n));
    out.push_back(static_cast<uint8_t>(n >> 8));
    out.push_back(static_cast<uint8_t>(~n));
    out.push_back(static_cast<uint8_t>(~n >> 8));
    out.insert(out.end(), raw.begin() + static_cast<ptrdiff_t>(at),
               raw.begin() + static_cast<ptrdiff_t>(at + n));
    at += n;
  } while (at < raw.size());
  PutBig32(out, Adler32(raw));
  return out;
}

Bytes EncodePng(const std::vector<uint32_t>& pixels, int width, int height) {
  Bytes raw;
  raw.reserve(static_cast<size_t>(height) * (static_cast<size_t>(width) * 3 + 1));
  for (int y = 0; y < height; ++y) {
    raw.push_back(0);  // filter: none
    for (int x = 0; x < width; ++x) {
      const uint32_t bgra = pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
      raw.insert(raw.end(), {static_cast<uint8_t>(bgra >> 16), static_cast<uint8_t>(bgra >> 8),
                             static_cast<uint8_t>(bgra)});
    }
  }
  Bytes header;
  PutBig32(header, static_cast<uint32_t>(width));
  PutBig32(header, static_cast<uint32_t>(height));
  header.insert(header.end(), {8, 2, 0, 0, 0});  // 8 bits, RGB, deflate, no filter, no interlace
  Bytes png{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  PutChunk(png, "IHDR", header);
  PutChunk(png, "IDAT", Zlib(raw));
  PutChunk(png, "IEND", {});
  return png;
}

struct MemoryDcTraits {
  using Handle = HDC;
  static HDC Invalid() noexcept { return nullptr; }
  static void Close(HDC dc) noexcept { DeleteDC(dc); }
};
struct BitmapTraits {
  using Handle = HBITMAP;
  static HBITMAP Invalid() noexcept { return nullptr; }
  static void Close(HBITMAP bitmap) noexcept { DeleteObject(bitmap); }
};

// The DC of a whole window, frame included, given back when it goes.
class WindowDc {
 public:
  explicit WindowDc(HWND window) noexcept : window_(window), dc_(GetWindowDC(window)) {}
  ~WindowDc() {
    if (dc_) ReleaseDC(window_, dc_);
  }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  HDC get() const noexcept { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// The window's pixels as shown, top row first, 0x00RRGGBB each; empty when it cannot be had.
std::vector<uint32_t> Capture(HWND window, int& width, int& height) {
  RECT r{};
  if (!GetWindowRect(window, &r)) return {};
  width = r.right - r.left;
  height = r.bottom - r.top;
  if (width <= 0 || height <= 0) return {};
  RedrawWindow(window, nullptr, nullptr,
               RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
  WindowDc source(window);
  UniqueHandle<MemoryDcTraits> memory(CreateCompatibleDC(source.get()));
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  UniqueHandle<BitmapTraits> bitmap(
      CreateDIBSection(memory.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!source.get() || !memory || !bitmap) return {};
  std::vector<uint32_t> pixels;
  HGDIOBJ old = SelectObject(memory.get(), bitmap.get());
  // A right-to-left window's DC is mirrored; the picture is wanted as the screen shows it.
  SetLayout(source.get(), 0);
  if (BitBlt(memory.get(), 0, 0, width, height, source.get(), 0, 0, SRCCOPY)) {
    GdiFlush();
    const auto* p = static_cast<const uint32_t*>(bits);
    pixels.assign(p, p + static_cast<size_t>(width) * static_cast<size_t>(height));
  }
  SelectObject(memory.get(), old);
  return pixels;
}

}  // namespace

bool WritePng(const std::wstring& path, HWND window) {
  int width = 0, height = 0;
  const std::vector<uint32_t> pixels = Capture(window, width, height);
  if (pixels.empty()) return false;
  const Bytes png = EncodePng(pixels, width, height);
  UniqueFile file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  return file && WriteFile(file.get(), png.data(), static_cast<DWORD>(png.size()), &written, nullptr) &&
         written == png.size();
}

}  // namespace corvina::win32

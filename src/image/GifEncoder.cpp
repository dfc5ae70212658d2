#include "image/GifEncoder.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <vector>

namespace zyn {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Write = std::function<void(std::span<const std::uint8_t>)>;

constexpr std::uint8_t kImageMark = 0x2C;
constexpr std::uint8_t kEndMark = 0x3B;
/// Of the head's flags: there is a table of colours, and they had 8 bits a component.
constexpr int kColourTable = 0xF0;

constexpr int kMostCodeBits = 12;
constexpr unsigned kMostCodes = 1U << kMostCodeBits;
constexpr std::size_t kBlockBytes = 255;
/// Bytes that are handed over at once.
constexpr std::size_t kPieceBytes = 64 * (1 + kBlockBytes);

void append16(Bytes& bytes, int value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

/// Bits that tell each of so many colours apart.
int indexBits(std::size_t colours) {
  return std::max(1, static_cast<int>(std::bit_width(colours - 1)));
}

/// Everything before the pixels.
Bytes headOf(const IndexedPicture& picture) {
  const int bits = indexBits(picture.palette().size());
  Bytes head{'G', 'I', 'F', '8', '7', 'a'};
  append16(head, picture.width());
  append16(head, picture.height());
  head.insert(head.end(), {static_cast<std::uint8_t>(kColourTable | (bits - 1)), 0, 0});
  Palette table = picture.palette();
  table.resize(std::size_t{1} << bits);
  for (const Colour24& colour : table) {
    head.insert(head.end(), {colour.red, colour.green, colour.blue});
  }
  head.insert(head.end(), {kImageMark, 0, 0, 0, 0});
  append16(head, picture.width());
  append16(head, picture.height());
  head.push_back(0);
  return head;
}

/// Codes of growing width, lowest bits first, in blocks that begin with their length.
class CodeBlocks {
 public:
  explicit CodeBlocks(const Write& write) : write_(write) {}

  void put(unsigned code, int bits) {
    waiting_ |= code << waitingBits_;
    for (waitingBits_ += bits; waitingBits_ >= 8; waitingBits_ -= 8, waiting_ >>= 8) {
      putByte(static_cast<std::uint8_t>(waiting_));
    }
  }

  /// The rest, and the empty block behind all others.
  void finish() {
    if (waitingBits_ > 0) {
      putByte(static_cast<std::uint8_t>(waiting_));
    }
    if (piece_.size() > blockStart_) {
      endBlock();
    }
    piece_.push_back(0);
    write_(piece_);
  }

 private:
  void putByte(std::uint8_t byte) {
    if (piece_.size() == blockStart_) {
      piece_.push_back(0);  // the length
    }
    piece_.push_back(byte);
    if (piece_.size() - blockStart_ > kBlockBytes) {
      endBlock();
    }
  }

  void endBlock() {
    piece_[blockStart_] = static_cast<std::uint8_t>(piece_.size() - blockStart_ - 1);
    blockStart_ = piece_.size();
    if (blockStart_ >= kPieceBytes) {
      write_(piece_);
      piece_.clear();
      blockStart_ = 0;
    }
  }

  const Write& write_;
  unsigned waiting_ = 0;  ///< bits that are no whole byte yet
  int waitingBits_ = 0;
  Bytes piece_;
  std::size_t blockStart_ = 0;
};

/// The codes of strings of indices that have come before: a string is known by the code of all but
/// its last index, and that index.
class StringTable {
 public:
  StringTable() : slots_(kSlots) {}

  void clear() { std::ranges::fill(slots_, 0U); }

  /// The code of the string; where there is none yet, 0 and the string gets `next`, unless that is
  /// 0. No string of more than one index has that code.
  unsigned codeOf(unsigned prefix, std::uint8_t index, unsigned next) {
    const std::uint32_t key = prefix << 8 | index;
    std::size_t slot = (key * 0x9E3779B1U) >> (32 - kSlotBits);
    for (; slots_[slot] != 0; slot = (slot + 1) % kSlots) {
      if (slots_[slot] >> kMostCodeBits == key) {
        return slots_[slot] % kMostCodes;
      }
    }
    if (next != 0) {
      slots_[slot] = key << kMostCodeBits | next;
    }
    return 0;
  }

 private:
  /// Four times as many as strings: one is seldom looked for in more than one of them.
  static constexpr int kSlotBits = kMostCodeBits + 2;
  static constexpr std::size_t kSlots = std::size_t{1} << kSlotBits;

  std::vector<std::uint32_t> slots_;  ///< strings with their codes; 0: free
};

/// Compresses a sequence of indices (Welch 1984), forgetting all strings when codes run out.
class Compressor {
 public:
  Compressor(int indexBits, const Write& write)
      : clearCode_(1U << indexBits), indexBits_(indexBits), blocks_(write) {
    forget();
  }

  void take(std::span<const std::uint8_t> indices) {
    for (const std::uint8_t index : indices) {
      takeOne(index);
    }
  }

  void finish() {
    putString();
    blocks_.put(clearCode_ + 1, codeBits_);
    blocks_.finish();
  }

 private:
  void takeOne(std::uint8_t index) {
    if (!hasString_) {
      hasString_ = true;
      string_ = index;
      return;
    }
    const unsigned known = strings_.codeOf(string_, index, next_ < kMostCodes ? next_ : 0);
    if (known != 0) {
      string_ = known;
      return;
    }
    putString();
    if (next_ < kMostCodes) {
      ++next_;
    } else {
      forget();
    }
    string_ = index;
  }

  void putString() {
    blocks_.put(string_, codeBits_);
    if (next_ == 1U << codeBits_ && codeBits_ < kMostCodeBits) {
      ++codeBits_;  // readers know of a string one code later
    }
  }

  void forget() {
    blocks_.put(clearCode_, codeBits_);
    strings_.clear();
    codeBits_ = indexBits_ + 1;
    next_ = clearCode_ + 2;
  }

  unsigned clearCode_;
  int indexBits_;
  int codeBits_ = indexBits_ + 1;
  unsigned next_ = 0;    ///< the code of the next new string
  unsigned string_ = 0;  ///< the code of what has been taken and not put out
  bool hasString_ = false;
  StringTable strings_;
  CodeBlocks blocks_;
};

}  // namespace

void encodeGif(const IndexedPicture& picture, const Write& write) {
  write(headOf(picture));
  const int bits = std::max(2, indexBits(picture.palette().size()));  // readers expect no less
  write(std::array{static_cast<std::uint8_t>(bits)});
  Compressor compressor(bits, write);
  picture.giveRows([&](std::span<const std::uint8_t> row) { compressor.take(row); });
  compressor.finish();
  write(std::array{kEndMark});
}

}  // namespace zyn

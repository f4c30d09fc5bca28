#ifndef VORTM_COMMON_OBJECTWRITER_H
#define VORTM_COMMON_OBJECTWRITER_H

#include <string>

namespace vortm {
namespace common {

// Sink of the little-endian primitives that saved objects are made of.
class ObjectWriter {
 public:
  virtual ~ObjectWriter() {}
  virtual bool writeString(const std::string& value) = 0;
  virtual bool writeLine(const std::string& value) = 0;
  virtual bool writeUint64(unsigned long value) = 0;
  virtual bool writeUint32(unsigned int value) = 0;
  virtual bool writeUint16(unsigned short value) = 0;
  virtual bool writeInt64(long value) = 0;
  virtual bool writeInt32(int value) = 0;
  virtual bool writeInt16(short value) = 0;
  virtual bool writeDouble(double value) = 0;
  virtual bool writeByte(unsigned char value) = 0;
};

}  // namespace common
}  // namespace vortm

#endif

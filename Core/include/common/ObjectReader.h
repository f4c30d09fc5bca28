#ifndef VORTM_COMMON_OBJECTREADER_H
#define VORTM_COMMON_OBJECTREADER_H

#include <string>

namespace vortm {
namespace common {

// Source of the little-endian primitives that saved objects are made of.
// Each read returns true when the value was delivered.
class ObjectReader {
 public:
  virtual ~ObjectReader() {}
  virtual bool readString(std::string& value) = 0;
  virtual bool readLine(std::string& value) = 0;
  virtual bool readUint64(unsigned long& value) = 0;
  virtual bool readUint32(unsigned int& value) = 0;
  virtual bool readUint16(unsigned short& value) = 0;
  virtual bool readInt64(long& value) = 0;
  virtual bool readInt32(int& value) = 0;
  virtual bool readInt16(short& value) = 0;
  virtual bool readDouble(double& value) = 0;
  virtual bool readByte(unsigned char& value) = 0;
};

}  // namespace common
}  // namespace vortm

#endif

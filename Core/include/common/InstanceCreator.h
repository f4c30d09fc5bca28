#ifndef VORTM_COMMON_INSTANCECREATOR_H
#define VORTM_COMMON_INSTANCECREATOR_H

#include <string>

#include "common/AutoPtr.h"
#include "common/FastMutex.h"
#include "common/Singleton.h"
#include "utility/HashTable.h"

namespace vortm {
namespace common {

// Registry of interface T and base of its creators at once. Only the
// singleton instance has its table filled; each concrete creator registers
// itself there under its identifier when it is constructed.
template <class T>
class InstanceCreator {
 public:
  typedef Singleton<InstanceCreator<T>, LazyInstantiation, FastMutex> Registry;

  InstanceCreator() {}
  virtual ~InstanceCreator() {}

  // A new object of the class this creator stands for; the caller owns it.
  virtual T* create() { return nullptr; }

  // Looks the identifier up in the registry and builds a new object, or
  // returns null for an unknown identifier. The lock covers create().
  static T* getCreation(const std::string& identifier) {
    InstanceCreator<T>* registry = Registry::instance();
    FastMutex::ScopedLock lock(registry->m_mutex);
    AutoPtr<InstanceCreator<T> > wrapper;
    if (registry->m_creators.get(identifier, wrapper)) return wrapper->create();
    return nullptr;
  }

 protected:
  // A later creator with the same identifier replaces the earlier one.
  void registerSelf(const std::string& identifier) {
    AutoPtr<InstanceCreator<T> > wrapper(this, false);
    InstanceCreator<T>* registry = Registry::instance();
    FastMutex::ScopedLock lock(registry->m_mutex);
    registry->m_creators.putReplace(identifier, wrapper);
  }

 private:
  utility::HashTable<std::string, AutoPtr<InstanceCreator<T> > > m_creators;
  FastMutex m_mutex;
};

// Holds one creator, so that Singleton<InstanceCreatorHelper<C>>::instance()
// builds the creator (registering it) and keeps it alive until exit.
template <class C>
class InstanceCreatorHelper {
 public:
  C m_creator;
};

// Declares a concrete creator: identifier stored, self-registration in the
// constructor, create() allocating the class with its default constructor.
#define VORTM_DECLARE_CREATOR(CreatorName, Interface, Concrete, Identifier) \
  class CreatorName : public ::vortm::common::InstanceCreator<Interface> {  \
   public:                                                                  \
    CreatorName() : m_identifier(Identifier) { this->registerSelf(m_identifier); } \
    Interface* create() override { return new Concrete(); }                 \
    const std::string& getIdentifier() const { return m_identifier; }       \
                                                                            \
   private:                                                                 \
    std::string m_identifier;                                               \
  }

}  // namespace common
}  // namespace vortm

#endif

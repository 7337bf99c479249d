#include "asn1gen/cpp_types.h"
#include "asn1gen/emit.h"
#include "asn1gen/names.h"
#include "asn1gen/text_template.h"

namespace asn1gen {
namespace {

constexpr std::string_view kObjectClass = R"(
class @name@ : public @base@ {
  public:
    @name@();
};

)";

constexpr std::string_view kObject = R"(
@name@::@name@() : @base@(@id@) {}
)";

constexpr std::string_view kOwnIdentifier = R"(
namespace {
@identifier@
}  // namespace
)";

constexpr std::string_view kSetClass = R"(
class @name@ : public ObjectTable<@class@> {
  public:
    // The one table, made at the first call from any thread. The argument is not used.
    static @name@* instance(ASN1CTXT* = nullptr);

  private:
    friend void @name@Once();
    @name@();

    static @name@* mpInstance;
};

extern pthread_once_t @name@OnceControl;
void @name@Once();

namespace sets {
extern const ObjectSet @name@;
}

)";

constexpr std::string_view kEntries = R"(
namespace {

constexpr ObjectEntry k@name@Entries[] = {
    @entries@
};

}  // namespace

)";

constexpr std::string_view kSet = R"(
constinit const ObjectSet sets::@name@ = {"@name@", @array@, @count@};

@name@::@name@()
    : ObjectTable({
          @objects@
      }) {}

@name@* @name@::mpInstance = nullptr;
pthread_once_t @name@OnceControl = PTHREAD_ONCE_INIT;
void @name@Once() { @name@::mpInstance = new @name@; }
@name@* @name@::instance(ASN1CTXT*) {
    pthread_once(&@name@OnceControl, @name@Once);
    return mpInstance;
}

)";

std::string objectTemplate(const Object& object) {
    const std::string objectClass = cppName(object.objectClass);
    if (!object.value) return "PlainObject<" + objectClass + ">";
    return "TypedObject<" + objectClass + ", " + controlClass(*object.value) + ", " +
           descriptor(*object.value) + ">";
}

}  // namespace

std::string objectClass(const Object& object) {
    return fill(kObjectClass, {{"name", object.name}, {"base", objectTemplate(object)}});
}

std::string objectDefinition(const Object& object) {
    const std::string own =
        object.ownId ? fill(kOwnIdentifier, {{"identifier", identifierDefinition(*object.id)}}) : "";
    return own + fill(kObject, {{"name", object.name},
                                {"base", object.value ? "TypedObject" : "PlainObject"},
                                {"id", object.id->name}});
}

std::string setClass(const ObjectSet& set) {
    return fill(kSetClass, {{"name", set.name}, {"class", cppName(set.objectClass)}});
}

std::string setDefinition(const ObjectSet& set) {
    std::string entries, objects;
    for (const Object* object : set.objects) {
        entries += "{&" + object->id->name + ", " +
                   (object->value ? "&" + descriptor(*object->value) : "nullptr") + ", \"" + object->name +
                   "\"},\n";
        objects += "new " + object->name + ",\n";
    }
    const bool empty = set.objects.empty();
    return (empty ? "" : fill(kEntries, {{"name", set.name}, {"entries", entries}})) +
           fill(kSet, {{"name", set.name},
                       {"array", empty ? "nullptr" : "k" + set.name + "Entries"},
                       {"count", std::to_string(set.objects.size())},
                       {"objects", objects}});
}

}  // namespace asn1gen

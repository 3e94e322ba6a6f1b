#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <string>

#include <zonstoryparser/Export.h>

/// The XMP toolkit's entry points under their usual names, over the installed toolkit, which no host needs to see.
///
///     SXMPMeta::Initialize();                                    // once, before the first XMP call
///     {
///         SXMPMeta xmp;
///         zonstoryparser::WriteActionToXMP(u"Rain.", xmp);
///         std::string packet;
///         xmp.SerializeToBuffer(&packet, 0, 0, "", "", 0);
///     }                                                          // no SXMPMeta outlives the toolkit
///     SXMPMeta::Terminate();                                     // once, after the last
///
/// All text is UTF-8. Every failure is an XMP_Error with the toolkit's positive error id and a message of this layer's
/// own.
///
/// Nothing is ever printed. While a call runs, a filter stands before the buffer of std::cerr and drops what the calling
/// thread writes (the toolkit's words); other threads' output passes through, and the stream's state stays as it is.
/// After the last call the host's buffer is back. A host that exchanges the buffer while a call runs on another thread
/// may be given the filter as the earlier buffer, and may put it back: it leads to the buffer that stood behind it, and
/// goes with the next call. Such a host must not
///   - destroy the buffer that it took out before it has put the earlier one back, nor unload this library meanwhile;
///   - exchange it at the very moment in which a call begins or ends: the stream itself has no lock;
///   - let std::cerr throw (std::cerr.exceptions()) while it is in a state of error.
///
/// Threads: different objects may be used on different threads at the same time; calls on one object must not overlap.

using XMP_OptionBits = std::uint32_t;
using XMP_Index = std::int32_t;

constexpr XMP_Index kXMP_ArrayLastItem = -1;
constexpr XMP_OptionBits kXMP_PropValueIsStruct = 0x100;
constexpr XMP_OptionBits kXMP_PropValueIsArray = 0x200;
constexpr XMP_OptionBits kXMP_PropArrayIsOrdered = 0x400;
constexpr XMP_OptionBits kXMP_PropCompositeMask = 0x1F00; ///< Any bit set: a struct or an array, else a simple value.

constexpr XMP_OptionBits kXMP_OmitPacketWrapper = 0x10;
constexpr XMP_OptionBits kXMP_UseCompactFormat = 0x40;

/// The toolkit's ids that a host most often tells apart.
constexpr std::int32_t kXMPErr_Unknown = 0;
constexpr std::int32_t kXMPErr_Unavailable = 2; ///< SXMPMeta::Initialize() has not been called.
constexpr std::int32_t kXMPErr_BadObject = 3;   ///< An object that has been moved from.
constexpr std::int32_t kXMPErr_BadParam = 4;    ///< Among others: text that is not well-formed UTF-8.
constexpr std::int32_t kXMPErr_InternalFailure = 9;
constexpr std::int32_t kXMPErr_ExternalFailure = 11;
constexpr std::int32_t kXMPErr_BadSchema = 101; ///< A namespace URI that is empty or not registered.
constexpr std::int32_t kXMPErr_BadXPath = 102;  ///< A malformed path, or one that does not fit the property's form.
constexpr std::int32_t kXMPErr_BadOptions = 103;
constexpr std::int32_t kXMPErr_BadIndex = 104;
constexpr std::int32_t kXMPErr_BadSerialize = 107;
constexpr std::int32_t kXMPErr_BadFileFormat = 108;
constexpr std::int32_t kXMPErr_BadXML = 201;
constexpr std::int32_t kXMPErr_BadUnicode = 205; ///< U+FFFE and U+FFFF, which XML cannot hold.

/// A failure of the toolkit.
class ZONSTORYPARSER_API XMP_Error : public std::exception {
public:
    /// @param id  The toolkit's error id, positive (0 where it gives none).
    XMP_Error(std::int32_t id, std::string message);
    XMP_Error(const XMP_Error&) noexcept;
    XMP_Error& operator=(const XMP_Error&) noexcept;
    ~XMP_Error() override;

    std::int32_t GetID() const noexcept;
    const char* GetErrMsg() const noexcept;
    const char* what() const noexcept override;

private:
    std::int32_t mID;
    std::shared_ptr<const std::string> mMessage; // shared, so that copying an exception cannot throw
};

/// One piece of XMP metadata: properties by schema and path.
///
/// In every call `schemaNS` is a namespace URI (not a prefix) that the toolkit knows, and `name` a property name or a
/// path such as "dialogSequence[2]/xmpScript:character". A value or option pointer may be null where the caller does
/// not want it; it is assigned on a true result only.
///
/// Values are stored as they are, save that control characters (a zero byte included) become spaces, as everywhere in
/// XMP; tab, line feed and carriage return stay. A value that is not well-formed UTF-8 (kXMPErr_BadParam), or holds
/// U+FFFE or U+FFFF (kXMPErr_BadUnicode), is refused and leaves the object as it was.
class ZONSTORYPARSER_API SXMPMeta {
public:
    /// Starts the toolkit. Called by the host before any other call of this header, which else throws an XMP_Error
    /// (kXMPErr_Unavailable). Starts are counted: a plugin makes its own.
    /// @return false when the toolkit could not start; this one does not count then.
    static bool Initialize();
    /// Takes one start back; the last ends the toolkit, and no SXMPMeta may be left then. Does nothing without a start.
    static void Terminate();

    /// Makes a namespace known. A URI that is known already keeps its prefix.
    /// @param registeredPrefix  Receives the prefix in use, with its trailing colon; may be null.
    /// @return true when that prefix is the suggested one.
    /// @throws XMP_Error for an empty URI, or a prefix that is empty or no XML name.
    static bool RegisterNamespace(const char* namespaceURI, const char* suggestedPrefix, std::string* registeredPrefix);
    /// @param prefix  Receives the prefix in use, with its trailing colon; may be null. Left alone on false.
    /// @return Whether the namespace is known.
    static bool GetNamespacePrefix(const char* namespaceURI, std::string* prefix);

    SXMPMeta();
    /// Parses a packet, or RDF/XML without the packet wrapper. No bytes give an empty object, and so does any XML without
    /// RDF in it, whatever it is; one of less than some twenty bytes counts as malformed.
    /// @throws XMP_Error when the bytes are not well-formed XML, or hold RDF that is not XMP.
    SXMPMeta(const char* packet, std::size_t length);
    /// A deep copy: the two share nothing afterwards. It costs as much as writing a packet and parsing it.
    /// @throws XMP_Error when `other` has been moved from, or cannot be written as a packet.
    SXMPMeta(const SXMPMeta& other);
    /// Leaves `other` fit for destruction, for assignment and for being moved from; any other call on it throws an
    /// XMP_Error (kXMPErr_BadObject).
    SXMPMeta(SXMPMeta&& other) noexcept;
    SXMPMeta& operator=(const SXMPMeta& other);
    SXMPMeta& operator=(SXMPMeta&& other) noexcept;
    ~SXMPMeta();

    /// @return Whether the property exists. A struct or an array has an empty value.
    bool GetProperty(const char* schemaNS, const char* name, std::string* value, XMP_OptionBits* options) const;
    /// Creates or replaces a simple property; with kXMP_PropValueIsStruct or an array form as options and an empty
    /// value, creates a struct or array.
    void SetProperty(const char* schemaNS, const char* name, const std::string& value, XMP_OptionBits options = 0);
    /// Removes a property with all beneath it; nothing happens when it does not exist.
    void DeleteProperty(const char* schemaNS, const char* name);
    bool DoesPropertyExist(const char* schemaNS, const char* name) const;

    /// As GetProperty, for a field of the struct `structName`.
    bool GetStructField(const char* schemaNS, const char* structName, const char* fieldNS, const char* fieldName,
                        std::string* value, XMP_OptionBits* options) const;
    /// As SetProperty, for a field; creates the struct if need be (but no array item).
    void SetStructField(const char* schemaNS, const char* structName, const char* fieldNS, const char* fieldName,
                        const std::string& value, XMP_OptionBits options = 0);

    /// Appends an item.
    /// @param arrayOptions  The form of the array, which is created when it does not exist.
    /// @param itemValue     Null for a struct or array item.
    void AppendArrayItem(const char* schemaNS, const char* arrayName, XMP_OptionBits arrayOptions,
                         const char* itemValue, XMP_OptionBits itemOptions = 0);
    /// @return 0 when the property does not exist.
    /// @throws XMP_Error (kXMPErr_BadXPath) when it is not an array.
    XMP_Index CountArrayItems(const char* schemaNS, const char* arrayName) const;

    /// Writes the whole object as RDF/XML, in a packet wrapper unless kXMP_OmitPacketWrapper is given.
    /// @param packet   Assigned.
    /// @param padding  Bytes of white space behind the data, for later growth in place; 0 means about 2 KB.
    /// @param newline  Empty for the toolkit's own, a line feed.
    /// @param indent   Empty for the toolkit's own, three spaces.
    void SerializeToBuffer(std::string* packet, XMP_OptionBits options, std::uint32_t padding, const char* newline,
                           const char* indent, std::int32_t baseIndent) const;

private:
    friend class SXMPFiles;

    void* mObject; // the toolkit's handle, owned; null after a move
};

class ZONSTORYPARSER_API SXMPUtils {
public:
    /// Composes the path of an array item: "name[3]", or "name[last()]" for kXMP_ArrayLastItem. The array need not
    /// exist.
    /// @param path  Assigned.
    /// @throws XMP_Error for an unknown namespace, an empty name, or an index that is neither positive nor
    ///         kXMP_ArrayLastItem.
    static void ComposeArrayItemPath(const char* schemaNS, const char* arrayName, XMP_Index index, std::string* path);
};

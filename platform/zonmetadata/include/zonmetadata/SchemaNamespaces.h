#pragma once

namespace zonmetadata {

/// Namespace URIs of the metadata schemas, as published for the prefix named; the XMP toolkit has each registered
/// under that prefix. Stored in every clip ever written: never changed.
inline constexpr char kScriptNamespaceURI[] = "http://ns.adobe.com/xmp/1.0/Script/";             // xmpScript
inline constexpr char kDynamicMediaNamespaceURI[] = "http://ns.adobe.com/xmp/1.0/DynamicMedia/"; // xmpDM
inline constexpr char kDublinCoreNamespaceURI[] = "http://purl.org/dc/elements/1.1/";            // dc

} // namespace zonmetadata

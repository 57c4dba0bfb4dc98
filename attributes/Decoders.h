/// The decoders of all families, by the sources that have them.
#pragma once

#include "attributes/Family.h"

namespace tolvane::attributes {

// PlainText.cpp
Outcome decodeText(const Subject& subject, Answer& answer);
Outcome decodeTags(const Subject& subject, Answer& answer);
Outcome decodeRating(const Subject& subject, Answer& answer);
Outcome decodeTruth(const Subject& subject, Answer& answer);
Outcome decodeDecimal(const Subject& subject, Answer& answer);
Outcome decodeEmpty(const Subject& subject, Answer& answer);
Outcome decodeOpaque(const Subject& subject, Answer& answer);
Outcome decodeUUIDText(const Subject& subject, Answer& answer);
Outcome decodeIni(const Subject& subject, Answer& answer);

// StoredChecksum.cpp
Outcome decodeChecksum(const Subject& subject, Answer& answer);

// LinuxTexts.cpp
Outcome decodeCoredump(const Subject& subject, Answer& answer);
Outcome decodeCreationMicroseconds(const Subject& subject, Answer& answer);
Outcome decodeSecondsText(const Subject& subject, Answer& answer);
Outcome decodePaxFlags(const Subject& subject, Answer& answer);
Outcome decodeRsyncStat(const Subject& subject, Answer& answer);
Outcome decodeOverrideStat(const Subject& subject, Answer& answer);
Outcome decodeCompression(const Subject& subject, Answer& answer);
Outcome decodeSecurityContext(const Subject& subject, Answer& answer);
Outcome decodeCephText(const Subject& subject, Answer& answer);

// PosixAcl.cpp
Outcome decodePosixAcl(const Subject& subject, Answer& answer);
Outcome decodeXfsAcl(const Subject& subject, Answer& answer);
Outcome decodeRsyncAcl(const Subject& subject, Answer& answer);

// Capabilities.cpp
Outcome decodeCapabilities(const Subject& subject, Answer& answer);

// EncryptionContext.cpp
Outcome decodeEncryptionContext(const Subject& subject, Answer& answer);

// Integrity.cpp
Outcome decodeIntegrity(const Subject& subject, Answer& answer);
Outcome decodeRuleDigest(const Subject& subject, Answer& answer);
Outcome decodeEcryptfs(const Subject& subject, Answer& answer);

// Nfs4Acl.cpp
Outcome decodeNfs4Acl(const Subject& subject, Answer& answer);
Outcome decodeNfs4AclNumbers(const Subject& subject, Answer& answer);
Outcome decodeNfs4AclBlob(const Subject& subject, Answer& answer);
Outcome decodeRichAcl(const Subject& subject, Answer& answer);

// SecurityDescriptor.cpp
Outcome decodeSecurityDescriptor(const Subject& subject, Answer& answer);
Outcome decodeNtAcl(const Subject& subject, Answer& answer);

// MacSecurity.cpp
Outcome decodeMacSecurity(const Subject& subject, Answer& answer);
Outcome decodeMacAclText(const Subject& subject, Answer& answer);

// DosAttributes.cpp
Outcome decodeDosAttributes(const Subject& subject, Answer& answer);
Outcome decodeDosNumber(const Subject& subject, Answer& answer);
Outcome decodeDosNumberBigEndian(const Subject& subject, Answer& answer);

// ReparsePoint.cpp
Outcome decodeReparsePoint(const Subject& subject, Answer& answer);

// SambaRecords.cpp
Outcome decodeAfpInfo(const Subject& subject, Answer& answer);
Outcome decodeSambaPai(const Subject& subject, Answer& answer);
Outcome decodeSambaStreamPart(const Subject& subject, Answer& answer);

// NtfsRecords.cpp
Outcome decodeNtfsTimes(const Subject& subject, Answer& answer);
Outcome decodeNtfsTimesBigEndian(const Subject& subject, Answer& answer);
Outcome decodeNtfsObjectId(const Subject& subject, Answer& answer);
Outcome decodeNtfsExtended(const Subject& subject, Answer& answer);
Outcome decodeNulList(const Subject& subject, Answer& answer);

// ZoneIdentifier.cpp
Outcome decodeZoneIdentifier(const Subject& subject, Answer& answer);

// Overlay.cpp
Outcome decodeOverlay(const Subject& subject, Answer& answer);

// ContainerRecords.cpp
Outcome decodeRootlessOwner(const Subject& subject, Answer& answer);
Outcome decodeOstreeMeta(const Subject& subject, Answer& answer);
Outcome decodeVirtualNumber(const Subject& subject, Answer& answer);
Outcome decodePickle(const Subject& subject, Answer& answer);

// ClusterRecords.cpp
Outcome decodeUUIDBytes(const Subject& subject, Answer& answer);
Outcome decodeGlusterRange(const Subject& subject, Answer& answer);
Outcome decodeGlusterPending(const Subject& subject, Answer& answer);
Outcome decodeGlusterTimes(const Subject& subject, Answer& answer);
Outcome decodeBigEndianNumbers(const Subject& subject, Answer& answer);
Outcome decodeCephRecord(const Subject& subject, Answer& answer);
Outcome decodeGlusterSigned(const Subject& subject, Answer& answer);
Outcome decodeGlusterSignature(const Subject& subject, Answer& answer);

// LustreLayout.cpp
Outcome decodeLustreLayout(const Subject& subject, Answer& answer);
Outcome decodeLustreFolder(const Subject& subject, Answer& answer);

// LustreRecords.cpp
Outcome decodeLustreIdentity(const Subject& subject, Answer& answer);
Outcome decodeLustreLinks(const Subject& subject, Answer& answer);
Outcome decodeLustreArchive(const Subject& subject, Answer& answer);
Outcome decodeLustreSize(const Subject& subject, Answer& answer);
Outcome decodeLustreParent(const Subject& subject, Answer& answer);

// Quarantine.cpp
Outcome decodeQuarantine(const Subject& subject, Answer& answer);

// SpotlightMetadata.cpp
Outcome decodeMetadata(const Subject& subject, Answer& answer);
Outcome decodeMetadataGist(const Subject& subject, Answer& answer);
Outcome decodeWhereFroms(const Subject& subject, Answer& answer);
Outcome decodeUserTags(const Subject& subject, Answer& answer);

// PropertyListFields.cpp
Outcome decodePropertyList(const Subject& subject, Answer& answer);

// FinderInfo.cpp
Outcome decodeFinderInfo(const Subject& subject, Answer& answer);

// MacRecords.cpp
Outcome decodeLastUsedDate(const Subject& subject, Answer& answer);
Outcome decodeProvenance(const Subject& subject, Answer& answer);
Outcome decodeAllowedApplications(const Subject& subject, Answer& answer);
Outcome decodeCompressedFile(const Subject& subject, Answer& answer);
Outcome decodeCodeSignature(const Subject& subject, Answer& answer);
Outcome decodeDiskImageChecksum(const Subject& subject, Answer& answer);
Outcome decodeTextEncoding(const Subject& subject, Answer& answer);

// ResourceForkFields.cpp
Outcome decodeResourceFork(const Subject& subject, Answer& answer);

// Companion.cpp
Outcome decodeAppleDouble(const Subject& subject, Answer& answer);

// Guess.cpp
Outcome decodeAnyForm(const Subject& subject, Answer& answer);
Outcome decodeBookmark(const Subject& subject, Answer& answer);

// DropboxRecords.cpp
Outcome decodeDropboxAttributes(const Subject& subject, Answer& answer);
Outcome decodeDropboxIdentity(const Subject& subject, Answer& answer);

} // namespace tolvane::attributes

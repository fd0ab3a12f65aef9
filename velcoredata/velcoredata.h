// libvelcoredata: every public header. Kept complete by the umbrella-header test.
#pragma once

// platform
#include "velcoredata/platform/CaseFolding.h"
#include "velcoredata/platform/CoreThreadContext.h"
#include "velcoredata/platform/Export.h"
#include "velcoredata/platform/InitOnce.h"
#include "velcoredata/platform/Locks.h"
#include "velcoredata/platform/LogMessage.h"
#include "velcoredata/platform/LogicException.h"
#include "velcoredata/platform/Messages.h"
#include "velcoredata/platform/RefCnt.h"
#include "velcoredata/platform/TCType.h"
#include "velcoredata/platform/TFormatString.h"
#include "velcoredata/platform/THash.h"
#include "velcoredata/platform/TSettings.h"
#include "velcoredata/platform/TString.h"
#include "velcoredata/platform/TSystem.h"
#include "velcoredata/platform/VelICU.h"
#include "velcoredata/platform/VelmoraException.h"

// core
#include "velcoredata/core/CoreDataOptions.h"
#include "velcoredata/core/EnumEncoding.h"
#include "velcoredata/core/VelErrorsError.h"

// datetime
#include "velcoredata/datetime/CalendarTypeId.h"
#include "velcoredata/datetime/DateArithmetic.h"
#include "velcoredata/datetime/DateOptionsUtils.h"
#include "velcoredata/datetime/DateTime.h"
#include "velcoredata/datetime/DateTimeHierarchy.h"
#include "velcoredata/datetime/DateTimeParseOptions.h"
#include "velcoredata/datetime/DateTimeParsingFormats.h"
#include "velcoredata/datetime/DateTimeRange.h"
#include "velcoredata/datetime/DateTimeSpan.h"
#include "velcoredata/datetime/DateTypes.h"
#include "velcoredata/datetime/DayNumber.h"
#include "velcoredata/datetime/FiscalConversions.h"
#include "velcoredata/datetime/GregorianDateOptions.h"
#include "velcoredata/datetime/IDateOptions.h"
#include "velcoredata/datetime/ISO8601DateOptions.h"
#include "velcoredata/datetime/Interval.h"
#include "velcoredata/datetime/Time.h"

// locale
#include "velcoredata/locale/CoreICUUtils.h"
#include "velcoredata/locale/ICUUtils.h"
#include "velcoredata/locale/LanguageCode.h"
#include "velcoredata/locale/LanguageUtils.h"
#include "velcoredata/locale/LocaleHelper.h"
#include "velcoredata/locale/NumberFormat.h"
#include "velcoredata/locale/TLocale.h"

// collation
#include "velcoredata/collation/BinaryCollator.h"
#include "velcoredata/collation/BinaryCollatorPool.h"
#include "velcoredata/collation/Collation.h"
#include "velcoredata/collation/CollationAdapter.h"
#include "velcoredata/collation/CollationConflictResolver.h"
#include "velcoredata/collation/CollationType.h"
#include "velcoredata/collation/Collator.h"
#include "velcoredata/collation/CollatorName.h"
#include "velcoredata/collation/CollatorPool.h"
#include "velcoredata/collation/CollatorRef.h"
#include "velcoredata/collation/ICUCollator.h"
#include "velcoredata/collation/ICUCollatorPool.h"
#include "velcoredata/collation/IGlobalIndirectStringPool.h"
#include "velcoredata/collation/IndirectString.h"
#include "velcoredata/collation/IndirectStringConfig.h"
#include "velcoredata/collation/IndirectStringFactoryMT.h"
#include "velcoredata/collation/IndirectStringLookupCache.h"
#include "velcoredata/collation/MruCache.h"
#include "velcoredata/collation/SourcedCollation.h"
#include "velcoredata/collation/WeakIndirectStringFactory.h"

// names
#include "velcoredata/names/QualifiedName.h"

// strings
#include "velcoredata/strings/StringUtils.h"

// util
#include "velcoredata/util/ColorObject.h"
#include "velcoredata/util/ColorObjectParser.h"
#include "velcoredata/util/FeatureFlagId.h"
#include "velcoredata/util/FeatureFlags.h"
#include "velcoredata/util/FeatureIdLookup.h"
#include "velcoredata/util/FeatureInfo.h"
#include "velcoredata/util/FeatureOverrides.h"
#include "velcoredata/util/ScopedFeatureFlags.h"
#include "velcoredata/util/VersionNumber.h"

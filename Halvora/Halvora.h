#pragma once

// Everything, for quick use.

#include <Halvora/Format.h>
#include <Halvora/array/ArrayView.h>
#include <Halvora/array/HLVArray.h>
#include <Halvora/error/Catalogue.h>
#include <Halvora/error/Describe.h>
#include <Halvora/error/Exception.h>
#include <Halvora/error/HLVError.h>
#include <Halvora/error/HLVErrorException.h>
#include <Halvora/error/Holder.h>
#include <Halvora/error/Json.h>
#include <Halvora/error/List.h>
#include <Halvora/error/Param.h>
#include <Halvora/text/Braces.h>
#include <Halvora/text/Convert.h>
#include <Halvora/text/CsvReader.h>
#include <Halvora/text/HLVString.h>
#include <Halvora/text/ITranslatable.h>
#include <Halvora/text/ITranslator.h>
#include <Halvora/text/ResString.h>
#include <Halvora/text/ResString2.h>
#include <Halvora/text/Utf8.h>
#include <Halvora/text/VarChar.h>
#include <Halvora/types/Binary16.h>
#include <Halvora/types/ElementTypes.h>
#include <Halvora/types/HalvTypes.h>
#include <Halvora/types/ParseBinary16.h>
#include <Halvora/types/ResultCodes.h>
#include <Halvora/types/Round.h>
#include <Halvora/version/KrVersion.h>

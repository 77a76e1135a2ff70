# Written by tools/python/stubs.py from the module; edit the docstrings in C++ instead.
from collections.abc import Iterable, Iterator
from typing import Any, ClassVar, NoReturn, overload
from uuid import UUID

from _typeshed import ReadableBuffer, WriteableBuffer

_Param = bool | int | float | str | Binary16 | ResString

class Binary16:
    """A 16-byte value, most often an identifier. It does not change.

    str() is the grouped form, repr() the hexadecimal one."""
    @overload
    def __init__(self) -> None:
        """All bytes zero."""
    @overload
    def __init__(self, text: str) -> None:
        """Reads either text form, strictly."""
    @overload
    def __init__(self, bytes: ReadableBuffer) -> None:
        """Takes exactly 16 bytes as they lie."""
    @overload
    def __init__(self, part1: int, part2: int, part3: int, part4: int) -> None:
        """The four parts of an identifier."""
    @staticmethod
    def of(type: eDataType, number: bool | int | float) -> Binary16:
        """The carrier of a number of a type, in its leading bytes."""
    def get(self, type: eDataType) -> bool | int | float:
        """The leading bytes as a number of a type."""
    @staticmethod
    def fromUuidBytes(bytes: ReadableBuffer) -> Binary16:
        """Of the 16 bytes of a UUID, the most significant first."""
    def toUuidBytes(self) -> bytes:
        """The 16 bytes as UUID.bytes; bytes() is UUID.bytes_le."""
    @staticmethod
    def fromUuid(uuid: UUID) -> Binary16:
        """Of a uuid.UUID, with the same text."""
    def toUuid(self) -> UUID:
        """The uuid.UUID with the same text."""
    def toHexadecimal(self) -> str:
        """0x and 32 digits, byte 15 first."""
    def toGrouped(self) -> str:
        """32 digits in five groups, as of a UUID."""
    def __bytes__(self) -> bytes: ...
    def __str__(self) -> str: ...
    def __repr__(self) -> str: ...
    def __len__(self) -> int: ...
    def __bool__(self) -> bool: ...
    def __getitem__(self, index: int) -> int: ...
    def __getstate__(self) -> bytes: ...
    def __setstate__(self, state: bytes) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    def __ne__(self, other: object) -> bool: ...
    def __lt__(self, other: Binary16) -> bool: ...
    def __le__(self, other: Binary16) -> bool: ...
    def __gt__(self, other: Binary16) -> bool: ...
    def __ge__(self, other: Binary16) -> bool: ...
    EMPTY: ClassVar[Binary16]
    MIN: ClassVar[Binary16]
    MAX: ClassVar[Binary16]

class Convert:
    """Text between encodings, and the small text tools."""
    def __init__(self, *args: object, **kwargs: object) -> NoReturn: ...
    @overload
    @staticmethod
    def toAString(text: str) -> bytes:
        """As ISO 8859-1; what that lacks is a space."""
    @overload
    @staticmethod
    def toAString(type: eDataType) -> str:
        """The mixed-case name of a type, such as Int32."""
    @staticmethod
    def toWString(text: bytes) -> str:
        """From ISO 8859-1."""
    @staticmethod
    def trim(text: str, set: str = ' \t\r\n') -> str:
        """Without the characters of `set` at both ends; others have to be there."""
    @staticmethod
    def trimLeft(text: str, set: str = ' \t\r\n') -> str:
        """Without the characters of `set` in front."""
    @staticmethod
    def trimRight(text: str, set: str = ' \t\r\n') -> str:
        """Without the characters of `set` at the end."""
    @staticmethod
    def split(text: str, separator: str) -> list[str]:
        """Cut at every separator; one at the very end is followed by no field."""
    @staticmethod
    def splitQuoted(text: str, separator: str) -> list[str]:
        """Cut at every separator outside double quotes."""
    @staticmethod
    def toByte(digits: str) -> int:
        """The value of two hexadecimal digits."""
    @staticmethod
    def toBool(text: str) -> bool:
        """True for 1, and for what begins with true in any case."""

DTG_BINARY16: eDataTypeGroup
DTG_BOOL: eDataTypeGroup
DTG_ID: eDataTypeGroup
DTG_NUMERIC: eDataTypeGroup
DTG_STRING: eDataTypeGroup
DTG_TICK: eDataTypeGroup
DTG_VOID: eDataTypeGroup
DT_BINARY16: eDataType
DT_BOOL: eDataType
DT_BYTE: eDataType
DT_DOUBLE: eDataType
DT_FLOAT: eDataType
DT_ID: eDataType
DT_INT16: eDataType
DT_INT32: eDataType
DT_INT64: eDataType
DT_STRING: eDataType
DT_STRINGRES: eDataType
DT_TICK: eDataType
DT_UINT16: eDataType
DT_UINT32: eDataType
DT_UINT64: eDataType
DT_VOID: eDataType
ERR_NULL_POINTER: int
ERR_OUT_OF_RANGE: int
ERR_WRONG_TYPE: int
class HLVArray:
    """At most 65,535 values of one data type.

    memoryview() reads numbers without a copy, and 16-byte values as rows of 16 bytes. While such a
    view is in use, whatever would change the array raises BufferError."""
    @overload
    def __init__(self, type: eDataType) -> None:
        """Empty, of a type."""
    @overload
    def __init__(self, type: eDataType, values: Iterable[Any] | ReadableBuffer | HLVArray) -> None:
        """Of an iterable, or of a buffer of the type."""
    def __len__(self) -> int: ...
    @overload
    def __getitem__(self, index: int) -> Any: ...
    @overload
    def __getitem__(self, slice: slice) -> HLVArray: ...
    def __setitem__(self, index: int, value: Any) -> None: ...
    def __iter__(self) -> Iterator[Any]: ...
    def __eq__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]
    def __repr__(self) -> str: ...
    def __copy__(self) -> HLVArray: ...
    def __deepcopy__(self, memo: Any) -> HLVArray: ...
    def append(self, value: Any) -> None:
        """Adds a value of the array's type at the end."""
    def extend(self, values: Iterable[Any] | ReadableBuffer | HLVArray) -> None:
        """Adds the values of an iterable, a buffer of the type or an array at the end."""
    def tolist(self) -> list[Any]:
        """The values as a list."""
    def getDataType(self) -> eDataType:
        """The element type."""
    def getCount(self) -> int:
        """The number of elements."""
    def getByteSize(self) -> int:
        """The size of all elements in bytes; 0 for texts."""
    def clear(self, type: eDataType) -> None:
        """Becomes an empty array of a type."""
    def init(self, count: int, type: eDataType) -> None:
        """Becomes zero or empty elements of a type."""
    def add(self, values: Iterable[Any] | ReadableBuffer | HLVArray) -> None:
        """As extend()."""
    def removeRange(self, start: int, count: int) -> None:
        """Removes `count` elements from `start` on."""
    def __getstate__(self) -> Any: ...
    def __setstate__(self, state: tuple) -> None: ...
    def addBool(self, value: bool) -> None:
        """Adds a DT_BOOL at the end, also to an empty array of any type, which it turns into one of
        that; WrongTypeError for other arrays."""
    def setBool(self, index: int, value: bool) -> None:
        """Replaces the DT_BOOL at `index`, which counts from the start; WrongTypeError in an array
        of another type, OutOfRangeError behind its end."""
    def setRangeBool(self, start: int, values: Iterable[bool] | ReadableBuffer) -> None:
        """Replaces the DT_BOOL values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getBool(self) -> list[bool]:
        """The values, each a DT_BOOL, as a list; WrongTypeError in an array of another type."""
    def addByte(self, value: int) -> None:
        """Adds a DT_BYTE at the end, also to an empty array of any type, which it turns into one of
        that; WrongTypeError for other arrays."""
    def setByte(self, index: int, value: int) -> None:
        """Replaces the DT_BYTE at `index`, which counts from the start; WrongTypeError in an array
        of another type, OutOfRangeError behind its end."""
    def setRangeByte(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_BYTE values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getByte(self) -> list[int]:
        """The values, each a DT_BYTE, as a list; WrongTypeError in an array of another type."""
    def addInt16(self, value: int) -> None:
        """Adds a DT_INT16 at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setInt16(self, index: int, value: int) -> None:
        """Replaces the DT_INT16 at `index`, which counts from the start; WrongTypeError in an array
        of another type, OutOfRangeError behind its end."""
    def setRangeInt16(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_INT16 values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getInt16(self) -> list[int]:
        """The values, each a DT_INT16, as a list; WrongTypeError in an array of another type."""
    def addInt32(self, value: int) -> None:
        """Adds a DT_INT32 at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setInt32(self, index: int, value: int) -> None:
        """Replaces the DT_INT32 at `index`, which counts from the start; WrongTypeError in an array
        of another type, OutOfRangeError behind its end."""
    def setRangeInt32(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_INT32 values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getInt32(self) -> list[int]:
        """The values, each a DT_INT32, as a list; WrongTypeError in an array of another type."""
    def addInt64(self, value: int) -> None:
        """Adds a DT_INT64 at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setInt64(self, index: int, value: int) -> None:
        """Replaces the DT_INT64 at `index`, which counts from the start; WrongTypeError in an array
        of another type, OutOfRangeError behind its end."""
    def setRangeInt64(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_INT64 values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getInt64(self) -> list[int]:
        """The values, each a DT_INT64, as a list; WrongTypeError in an array of another type."""
    def addUInt16(self, value: int) -> None:
        """Adds a DT_UINT16 at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setUInt16(self, index: int, value: int) -> None:
        """Replaces the DT_UINT16 at `index`, which counts from the start; WrongTypeError in an
        array of another type, OutOfRangeError behind its end."""
    def setRangeUInt16(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_UINT16 values from `start` on; WrongTypeError in an array of another
        type, OutOfRangeError when they reach behind its end."""
    def getUInt16(self) -> list[int]:
        """The values, each a DT_UINT16, as a list; WrongTypeError in an array of another type."""
    def addUInt32(self, value: int) -> None:
        """Adds a DT_UINT32 at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setUInt32(self, index: int, value: int) -> None:
        """Replaces the DT_UINT32 at `index`, which counts from the start; WrongTypeError in an
        array of another type, OutOfRangeError behind its end."""
    def setRangeUInt32(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_UINT32 values from `start` on; WrongTypeError in an array of another
        type, OutOfRangeError when they reach behind its end."""
    def getUInt32(self) -> list[int]:
        """The values, each a DT_UINT32, as a list; WrongTypeError in an array of another type."""
    def addUInt64(self, value: int) -> None:
        """Adds a DT_UINT64 at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setUInt64(self, index: int, value: int) -> None:
        """Replaces the DT_UINT64 at `index`, which counts from the start; WrongTypeError in an
        array of another type, OutOfRangeError behind its end."""
    def setRangeUInt64(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_UINT64 values from `start` on; WrongTypeError in an array of another
        type, OutOfRangeError when they reach behind its end."""
    def getUInt64(self) -> list[int]:
        """The values, each a DT_UINT64, as a list; WrongTypeError in an array of another type."""
    def addFloat(self, value: float) -> None:
        """Adds a DT_FLOAT at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setFloat(self, index: int, value: float) -> None:
        """Replaces the DT_FLOAT at `index`, which counts from the start; WrongTypeError in an array
        of another type, OutOfRangeError behind its end."""
    def setRangeFloat(self, start: int, values: Iterable[float] | ReadableBuffer) -> None:
        """Replaces the DT_FLOAT values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getFloat(self) -> list[float]:
        """The values, each a DT_FLOAT, as a list; WrongTypeError in an array of another type."""
    def addDouble(self, value: float) -> None:
        """Adds a DT_DOUBLE at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setDouble(self, index: int, value: float) -> None:
        """Replaces the DT_DOUBLE at `index`, which counts from the start; WrongTypeError in an
        array of another type, OutOfRangeError behind its end."""
    def setRangeDouble(self, start: int, values: Iterable[float] | ReadableBuffer) -> None:
        """Replaces the DT_DOUBLE values from `start` on; WrongTypeError in an array of another
        type, OutOfRangeError when they reach behind its end."""
    def getDouble(self) -> list[float]:
        """The values, each a DT_DOUBLE, as a list; WrongTypeError in an array of another type."""
    def addString(self, value: str) -> None:
        """Adds a DT_STRING at the end, also to an empty array of any type, which it turns into one
        of that; WrongTypeError for other arrays."""
    def setString(self, index: int, value: str) -> None:
        """Replaces the DT_STRING at `index`, which counts from the start; WrongTypeError in an
        array of another type, OutOfRangeError behind its end."""
    def setRangeString(self, start: int, values: Iterable[str] | ReadableBuffer) -> None:
        """Replaces the DT_STRING values from `start` on; WrongTypeError in an array of another
        type, OutOfRangeError when they reach behind its end."""
    def getString(self) -> list[str]:
        """The values, each a DT_STRING, as a list; WrongTypeError in an array of another type."""
    def addTick(self, value: int) -> None:
        """Adds a DT_TICK at the end, also to an empty array of any type, which it turns into one of
        that; WrongTypeError for other arrays."""
    def setTick(self, index: int, value: int) -> None:
        """Replaces the DT_TICK at `index`, which counts from the start; WrongTypeError in an array
        of another type, OutOfRangeError behind its end."""
    def setRangeTick(self, start: int, values: Iterable[int] | ReadableBuffer) -> None:
        """Replaces the DT_TICK values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getTick(self) -> list[int]:
        """The values, each a DT_TICK, as a list; WrongTypeError in an array of another type."""
    def addID(self, value: Binary16) -> None:
        """Adds a DT_ID at the end, also to an empty array of any type, which it turns into one of
        that; WrongTypeError for other arrays."""
    def setID(self, index: int, value: Binary16) -> None:
        """Replaces the DT_ID at `index`, which counts from the start; WrongTypeError in an array of
        another type, OutOfRangeError behind its end."""
    def setRangeID(self, start: int, values: Iterable[Binary16] | ReadableBuffer) -> None:
        """Replaces the DT_ID values from `start` on; WrongTypeError in an array of another type,
        OutOfRangeError when they reach behind its end."""
    def getID(self) -> list[Binary16]:
        """The values, each a DT_ID, as a list; WrongTypeError in an array of another type."""
    def addBin16(self, value: Binary16) -> None:
        """Adds a DT_BINARY16 at the end, also to an empty array of any type, which it turns into
        one of that; WrongTypeError for other arrays."""
    def setBin16(self, index: int, value: Binary16) -> None:
        """Replaces the DT_BINARY16 at `index`, which counts from the start; WrongTypeError in an
        array of another type, OutOfRangeError behind its end."""
    def setRangeBin16(self, start: int, values: Iterable[Binary16] | ReadableBuffer) -> None:
        """Replaces the DT_BINARY16 values from `start` on; WrongTypeError in an array of another
        type, OutOfRangeError when they reach behind its end."""
    def getBin16(self) -> list[Binary16]:
        """The values, each a DT_BINARY16, as a list; WrongTypeError in an array of another type."""
    def addResString(self, value: ResString) -> None:
        """Adds a DT_STRINGRES at the end, also to an empty array of any type, which it turns into
        one of that; WrongTypeError for other arrays."""
    def setResString(self, index: int, value: ResString) -> None:
        """Replaces the DT_STRINGRES at `index`, which counts from the start; WrongTypeError in an
        array of another type, OutOfRangeError behind its end."""
    def setRangeResString(self, start: int, values: Iterable[ResString] | ReadableBuffer) -> None:
        """Replaces the DT_STRINGRES values from `start` on; WrongTypeError in an array of another
        type, OutOfRangeError when they reach behind its end."""
    def getResString(self) -> list[ResString]:
        """The values, each a DT_STRINGRES, as a list; WrongTypeError in an array of another
        type."""
    def __buffer__(self, flags: int, /) -> memoryview: ...

class HLVError:
    """A code, up to three values, and the error that this one wraps. It does not change.

    Below 0 is an error, above 0 a warning."""
    def __init__(self, code: int, *args: _Param, preceding: HLVError | None = None) -> None:
        """Up to three values of bool, int, float, str, Binary16 or ResString; `preceding` is
        copied."""
    @staticmethod
    def fromException(exception: BaseException) -> HLVError:
        """The error of an exception that carries one; of every other, code -1 and its text,
        preceded by its cause."""
    def getCode(self) -> int:
        """The code."""
    def params(self) -> tuple[Any, ...]:
        """The three parameters; an absent one is None."""
    def getPrecedingError(self) -> HLVError | None:
        """The error that this one wraps, or None."""
    def getBaseError(self) -> HLVError:
        """The end of the chain, which is this error itself when it wraps none."""
    def getByCode(self, code: int) -> HLVError | None:
        """The first error of the chain with the code, or None."""
    def isError(self) -> bool:
        """Whether the code is below 0."""
    def isWarning(self) -> bool:
        """Whether the code is above 0."""
    def message(self) -> str:
        """Error and the code."""
    def describe(self, translator: Translator) -> str:
        """The chain in a translator's words."""
    def toJson(self) -> str:
        """The chain as a line of JSON."""
    def throw(self, trace: str = '') -> NoReturn:
        """Raises it, through C++'s own exception."""
    def __iter__(self) -> Iterator[HLVError]:
        """Iterates over the chain, from this error down."""
    def __str__(self) -> str: ...
    def __repr__(self) -> str: ...
    class List:
        """Errors and warnings in the order in which they were added.

        It holds copies and gives copies: whatever is deleted first, the rest stays."""
        def __init__(self) -> None:
            """An empty list."""
        def add(self, error: HLVError) -> bool:
            """Adds a copy, but not of code 0; whether it is an error."""
        def clear(self) -> None:
            """Removes all entries."""
        def getCount(self) -> int:
            """The number of entries."""
        def getErrorCount(self) -> int:
            """The number of codes below 0."""
        def getWarningCount(self) -> int:
            """The number of codes above 0."""
        def __len__(self) -> int: ...
        def __iter__(self) -> Iterator[HLVError]:
            """Iterates over copies of what the list holds now."""
        @overload
        def __getitem__(self, index: int) -> HLVError:
            """A copy of an entry; from the end below 0. Takes as long as the index is big."""
        @overload
        def __getitem__(self, slice: slice) -> list[HLVError]:
            """Copies of entries, as Python's list."""

class HLVErrorException(Exception):
    """An exception of C++ with its chain in `error`, and its `trace`."""
    error: HLVError
    trace: str

class HalvTypes:
    """The catalogue of data types."""
    def __init__(self, *args: object, **kwargs: object) -> NoReturn: ...
    @overload
    @staticmethod
    def getDataTypeGroup(type: eDataType) -> eDataTypeGroup:
        """The group of a type."""
    @overload
    @staticmethod
    def getDataTypeGroup(group: eDataTypeGroup) -> list[eDataType]:
        """The types of a group, in the library's order."""
    @staticmethod
    def getMaxDataType(group: eDataTypeGroup) -> eDataType:
        """The widest type of a group."""
    @staticmethod
    def getSmallestCommonDataType(a: eDataType, b: eDataType) -> eDataType | None:
        """The type that values of both are widened to; None without one."""
    @staticmethod
    def dataTypeToString(type: eDataType) -> str:
        """The upper-case name, such as INT32."""
    @staticmethod
    def elementWidth(type: eDataType) -> int:
        """The size of a value in bytes; 0 for texts and DT_VOID."""
    ms_Version: ClassVar[KrVersion]

class KrVersion:
    """The version and build of a component; equal when the four parts of the version number are."""
    @overload
    def __init__(self) -> None:
        """All parts 0, all texts empty."""
    @overload
    def __init__(self, major: int, minor: int) -> None:
        """The first two parts."""
    @overload
    def __init__(self, major: int, minor: int, build: int, revision: int) -> None:
        """The four parts."""
    @overload
    def __init__(self, major: int, minor: int, build: int, revision: int, releaseType: str, buildDate: str, buildTime: str, configuration: str, buildFlag: bool, platform: str, compiler: str, productMajor: int, productMinor: int, productName: str, companyName: str, fileDescription: str, internalName: str, legalCopyright: str, originalFilename: str) -> None:
        """Everything."""
    def getMajor(self) -> int:
        """The first part."""
    def getMinor(self) -> int:
        """The second part."""
    def getBuild(self) -> int:
        """The third part."""
    def getRevision(self) -> int:
        """The fourth part."""
    def getProductVersion(self) -> tuple[int, int]:
        """The two parts of the product's version."""
    def getReleaseType(self) -> str:
        """Label of the release."""
    def getBuildDate(self) -> str:
        """The day it was built."""
    def getBuildTime(self) -> str:
        """The time it was built."""
    def getConfiguration(self) -> str:
        """Name of the build configuration."""
    def getBuildFlag(self) -> bool:
        """A flag of the build."""
    def getPlatform(self) -> str:
        """The platform it was built for."""
    def getCompiler(self) -> str:
        """The compiler and its version."""
    def getProductName(self) -> str:
        """The product it belongs to."""
    def getCompanyName(self) -> str:
        """The maker."""
    def getFileDescription(self) -> str:
        """What the file is."""
    def getInternalName(self) -> str:
        """Name of the component."""
    def getLegalCopyright(self) -> str:
        """Copyright line."""
    def getOriginalFilename(self) -> str:
        """Name of the file as delivered."""
    def __str__(self) -> str: ...
    def __repr__(self) -> str: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    def __ne__(self, other: object) -> bool: ...

class OutOfRangeError(ResultError, IndexError):
    """An index or range lies outside the object."""
    code: ClassVar[int]

class ResString:
    """An identified text of at most 128 UTF-16 units, longer ones are cut. It does not change.

    A text without identifier equals the same text under every one: there is no hash."""
    @overload
    def __init__(self, text: str = '') -> None:
        """A text without identifier."""
    @overload
    def __init__(self, id: Binary16, text: str) -> None:
        """A text under an identifier."""
    @staticmethod
    def fromPacked(buffer: ReadableBuffer, offset: int = 0) -> ResString:
        """Reads the packed form at `offset`; ValueError when it is not whole."""
    @staticmethod
    def sizeWithin(buffer: ReadableBuffer, offset: int = 0) -> int:
        """The bytes that the packed form at `offset` takes; 0 when it is not whole."""
    @staticmethod
    def fits(text: str) -> bool:
        """Whether a text would be kept whole."""
    def packed(self) -> bytes:
        """The packed form."""
    def __bytes__(self) -> bytes: ...
    def slot(self, capacity: int) -> bytes:
        """A slot of (capacity + 9) * 2 bytes."""
    def writeSlot(self, buffer: WriteableBuffer, offset: int, capacity: int) -> None:
        """Writes such a slot into a buffer."""
    def id(self) -> Binary16:
        """The identifier."""
    def length(self) -> int:
        """The length of the text in units."""
    def size(self) -> int:
        """The size of the packed form in bytes."""
    def wstr(self) -> str:
        """The text."""
    def __str__(self) -> str: ...
    def __repr__(self) -> str: ...
    def __len__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    __hash__: ClassVar[None]  # type: ignore[assignment]
    def __ne__(self, other: object) -> bool: ...
    def __getstate__(self) -> bytes: ...
    def __setstate__(self, state: bytes) -> None: ...
    maxLength: ClassVar[int]

class ResString2:
    """An identified text of any length, written by a translator."""
    @overload
    def __init__(self, text: str = '') -> None:
        """A text without identifier."""
    @overload
    def __init__(self, id: Binary16, text: str) -> None:
        """A text under an identifier."""
    @overload
    def __init__(self, text: ResString) -> None:
        """Both parts of a ResString."""
    def id(self) -> Binary16:
        """The identifier."""
    def getText(self) -> str:
        """The text as it is, without a translator."""
    def ToString(self, translator: Translator) -> str:
        """What the translator makes of it; the text itself without an identifier."""
    def __str__(self) -> str: ...
    def __repr__(self) -> str: ...
    def __hash__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...

class ResultError(Exception):
    """An operation reported `code`; its object is unchanged."""
    code: ClassVar[int]

class Round:
    """Rounding of measured and configured quantities, exact to the bit."""
    def __init__(self, *args: object, **kwargs: object) -> NoReturn: ...
    @overload
    @staticmethod
    def convert(value: float) -> int:
        """The nearest int, halves away from zero."""
    @overload
    @staticmethod
    def convert(value: float, digits: int) -> int:
        """value * 10**digits as an int, halves away from zero."""
    @overload
    @staticmethod
    def round(value: float) -> float:
        """floor(value + 0.5): halves go upward."""
    @overload
    @staticmethod
    def round(value: float, digits: int) -> float:
        """Rounded to decimal digits, halves upward."""

class Translator:
    """Base of translators written in Python: override what is known, return None for the
    default."""
    def __init__(self) -> None:
        """A subclass with an __init__ of its own calls this one."""
    def getTranslation(self, id: Binary16, defaultText: str) -> str | None:
        """The text for an identifier."""
    def getErrorDescription(self, code: int) -> str | None:
        """A sentence about an error code, or None."""
    def getErrorName(self, code: int) -> str | None:
        """The name of an error code, or None."""
    def getErrorParamDesc(self, code: int, param: int) -> str | None:
        """The name of a parameter from 1 on, or None."""
    def getLanguage(self) -> str | None:
        """The name of the language."""

class Utf8:
    """Text between UTF-8 and str; what is ill-formed becomes U+FFFD."""
    def __init__(self, *args: object, **kwargs: object) -> NoReturn: ...
    @staticmethod
    def toWString(text: ReadableBuffer) -> tuple[str, int, int]:
        """(text, how many were replaced, where the first one began) of UTF-8 bytes."""
    @staticmethod
    def fromWString(text: str) -> tuple[bytes, int, int]:
        """(bytes, how many were replaced, where the first one was) of a str."""
    @staticmethod
    def isValid(text: ReadableBuffer) -> bool:
        """Whether nothing would be replaced."""

class VarChar:
    """A text of at most 512 UTF-16 units, longer ones are cut. It does not change.

    The order is that of the stored bytes, not one of texts."""
    def __init__(self, text: str = '') -> None:
        """A text."""
    @staticmethod
    def fromRaw(buffer: ReadableBuffer, offset: int = 0) -> VarChar:
        """Reads the raw form at `offset`; ValueError when it is not whole."""
    @staticmethod
    def sizeWithin(buffer: ReadableBuffer, offset: int = 0) -> int:
        """The bytes that the raw form at `offset` takes; 0 when it is not whole."""
    @staticmethod
    def fits(text: str) -> bool:
        """Whether a text would be kept whole."""
    def raw(self) -> bytes:
        """The raw form."""
    def __bytes__(self) -> bytes: ...
    def slot(self, capacity: int) -> bytes:
        """A slot of 2 + 2 * capacity bytes."""
    def writeSlot(self, buffer: WriteableBuffer, offset: int, capacity: int) -> None:
        """Writes such a slot into a buffer."""
    def length(self) -> int:
        """The length in units."""
    def size(self) -> int:
        """The size of the raw form in bytes."""
    def wstr(self) -> str:
        """The text."""
    def __str__(self) -> str: ...
    def __repr__(self) -> str: ...
    def __len__(self) -> int: ...
    def __getstate__(self) -> bytes: ...
    def __setstate__(self, state: bytes) -> None: ...
    def __eq__(self, other: object) -> bool: ...
    def __hash__(self) -> int: ...
    def __ne__(self, other: object) -> bool: ...
    def __lt__(self, other: VarChar) -> bool: ...
    def __le__(self, other: VarChar) -> bool: ...
    def __gt__(self, other: VarChar) -> bool: ...
    def __ge__(self, other: VarChar) -> bool: ...
    maxLength: ClassVar[int]

class WrongTypeError(ResultError, TypeError):
    """A value of another type than the array's."""
    code: ClassVar[int]

__version__: str
class eDataType:
    """The scalar data types."""
    def __init__(self, value: int) -> None: ...
    def __repr__(self) -> str: ...
    @property
    def name(self) -> str: ...
    def __str__(self) -> str: ...
    @property
    def __members__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    def __lt__(self, other: Any) -> bool: ...
    def __gt__(self, other: Any) -> bool: ...
    def __le__(self, other: Any) -> bool: ...
    def __ge__(self, other: Any) -> bool: ...
    def __and__(self, other: Any) -> Any: ...
    def __rand__(self, other: Any) -> Any: ...
    def __or__(self, other: Any) -> Any: ...
    def __ror__(self, other: Any) -> Any: ...
    def __xor__(self, other: Any) -> Any: ...
    def __rxor__(self, other: Any) -> Any: ...
    def __invert__(self) -> Any: ...
    def __getstate__(self) -> int: ...
    def __hash__(self) -> int: ...
    @property
    def value(self) -> int: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __setstate__(self, state: int) -> None: ...
    DT_VOID: ClassVar[eDataType]
    DT_BOOL: ClassVar[eDataType]
    DT_BYTE: ClassVar[eDataType]
    DT_INT16: ClassVar[eDataType]
    DT_INT32: ClassVar[eDataType]
    DT_INT64: ClassVar[eDataType]
    DT_UINT16: ClassVar[eDataType]
    DT_UINT32: ClassVar[eDataType]
    DT_UINT64: ClassVar[eDataType]
    DT_FLOAT: ClassVar[eDataType]
    DT_DOUBLE: ClassVar[eDataType]
    DT_STRING: ClassVar[eDataType]
    DT_TICK: ClassVar[eDataType]
    DT_ID: ClassVar[eDataType]
    DT_BINARY16: ClassVar[eDataType]
    DT_STRINGRES: ClassVar[eDataType]

class eDataTypeGroup:
    """The groups of data types."""
    def __init__(self, value: int) -> None: ...
    def __repr__(self) -> str: ...
    @property
    def name(self) -> str: ...
    def __str__(self) -> str: ...
    @property
    def __members__(self) -> int: ...
    def __eq__(self, other: object) -> bool: ...
    def __ne__(self, other: object) -> bool: ...
    def __lt__(self, other: Any) -> bool: ...
    def __gt__(self, other: Any) -> bool: ...
    def __le__(self, other: Any) -> bool: ...
    def __ge__(self, other: Any) -> bool: ...
    def __and__(self, other: Any) -> Any: ...
    def __rand__(self, other: Any) -> Any: ...
    def __or__(self, other: Any) -> Any: ...
    def __ror__(self, other: Any) -> Any: ...
    def __xor__(self, other: Any) -> Any: ...
    def __rxor__(self, other: Any) -> Any: ...
    def __invert__(self) -> Any: ...
    def __getstate__(self) -> int: ...
    def __hash__(self) -> int: ...
    @property
    def value(self) -> int: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...
    def __setstate__(self, state: int) -> None: ...
    DTG_VOID: ClassVar[eDataTypeGroup]
    DTG_BOOL: ClassVar[eDataTypeGroup]
    DTG_NUMERIC: ClassVar[eDataTypeGroup]
    DTG_STRING: ClassVar[eDataTypeGroup]
    DTG_TICK: ClassVar[eDataTypeGroup]
    DTG_ID: ClassVar[eDataTypeGroup]
    DTG_BINARY16: ClassVar[eDataTypeGroup]

def readCsv(text: ReadableBuffer, separator: str = ',') -> tuple[list[list[bytes]], list[tuple[int, int, str]]]:
    """(records, faults) of CSV bytes: a record is a list of bytes, a fault (line, column,
    reason)."""

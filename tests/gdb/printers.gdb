# Prints the program's objects, sound and damaged.
define look
  printf "$arg0 = "
  output $arg0
  echo \n
end

look id
look noText
look text
look noRes
look res
look res2
look res2WithoutId
look varChar
look arrays
look params
look noError
look *holder.m_error
look holder
look noErrors
look list
look version
look fullVersion
look exception
look plainException
look position
look endPosition
look view
look textView

echo \n# at most four\n
set print elements 4
look text
look longText
look overlongVarChar
look deep
look arrays[13]
look fullVersion

echo \n# hexadecimal, and in no memory\n
output/x arrays[10]
echo \n
set $copy = arrays[13]
look $copy
set $copy = res2WithoutId
look $copy
set $copy = fullVersion
look $copy

echo \n# in ASCII\n
set print elements 200
set host-charset ASCII
set target-charset ASCII
look text
look arrays[13]
set host-charset UTF-8
set target-charset UTF-8

echo \n# damaged, without a limit\n
set print elements unlimited
look longText
look wildText
look overlongRes
look wildRes2
look wildType
look wildCount
look wildData
look wildTexts
look wildParam
look wildParamText
look looped
look cut
look wildHolder
look loopedList
look cutList
look wildEntry
look wildList
look wildVersion
look wildIterator
look wildView

echo \n# by address\n
halvtypes HLVArray &arrays[10]
halvtypes Halvora::HLVError holder.m_error

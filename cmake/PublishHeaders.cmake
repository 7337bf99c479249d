# Run by mirvane_public_headers: copies FILES from the folder FROM to the folder TO, where they name each other by
# their place under <mirvane/>. A copy that stays the same keeps its time.
foreach(file ${FILES})
  file(READ ${FROM}/${file} text)
  # The only quoted includes of a public header are those of other public headers.
  string(REPLACE "#include \"" "#include \"mirvane/" text "${text}")
  set(old "")
  if(EXISTS ${TO}/${file})
    file(READ ${TO}/${file} old)
  endif()
  if(NOT text STREQUAL old)
    file(WRITE ${TO}/${file} "${text}")
  endif()
endforeach()

# The faces of the interface, each from the Debian package that stands behind it: laid into fonts/ of the stage and of the
# installation, so that no text depends on what the machine has. Why these: docs/decisions/0008-the-faces-of-the-interface.md.
set(fonts
  Roboto-Regular.ttf        fonts-roboto-unhinted    truetype/roboto/unhinted/RobotoTTF
  Roboto-Medium.ttf         fonts-roboto-unhinted    truetype/roboto/unhinted/RobotoTTF
  Roboto-Bold.ttf           fonts-roboto-unhinted    truetype/roboto/unhinted/RobotoTTF
  DroidSansFallbackFull.ttf fonts-droid-fallback     truetype/droid
  MTLc3m.ttf                fonts-motoya-l-cedar     truetype/motoya-l-cedar
  NanumBarunGothic.ttf      fonts-nanum              truetype/nanum
  NanumBarunGothicBold.ttf  fonts-nanum              truetype/nanum
)
set(TARVINEL_FONT_ROOT /usr/share/fonts CACHE PATH "Where the font packages have laid their files")

# A face that was taken once must not stay in an older stage.
file(GLOB idle RELATIVE ${TARVINEL_STAGE}/fonts ${TARVINEL_STAGE}/fonts/*.ttf)
list(REMOVE_ITEM idle ${fonts})
list(TRANSFORM idle PREPEND ${TARVINEL_STAGE}/fonts/)
if(idle)
  file(REMOVE ${idle})
endif()

set(missing "")
while(fonts)
  list(POP_FRONT fonts file package folder)
  set(source ${TARVINEL_FONT_ROOT}/${folder}/${file})
  if(EXISTS ${source})
    configure_file(${source} ${TARVINEL_STAGE}/fonts/${file} COPYONLY)
    install(FILES ${source} DESTINATION fonts)
  else()
    string(APPEND missing "\n  ${source} (package ${package})")
  endif()
endwhile()
if(missing)
  message(FATAL_ERROR "These fonts are missing:${missing}\n"
    "cmake/install_packages.sh build installs them; -DTARVINEL_FONT_ROOT names another place.")
endif()

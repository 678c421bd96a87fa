<?xml version="1.0" encoding="UTF-8"?>
<!-- 1.0.7 to 1.2.0: a camera tells its film and focal length instead of its angles of view. -->
<xsl:stylesheet version="1.0" exclude-result-prefixes="from math"
    xmlns:xsl="http://www.w3.org/1999/XSL/Transform"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"
    xmlns:math="http://exslt.org/math"
    xmlns:from="http://qel.example/ns/qeli/1_0_7/qeli"
    xmlns="http://qel.example/ns/qeli/1_2_0/qeli">
  <xsl:include href="../Shared/OneVersionOnly.xslt"/>
  <xsl:include href="../Shared/KeepForeignContent.xslt"/>

  <xsl:template match="/">
    <xsl:call-template name="refuseOtherVersions">
      <xsl:with-param name="expected" select="'http://qel.example/ns/qeli/1_0_7/qeli'"/>
    </xsl:call-template>
    <xsl:if test="not(function-available('math:tan'))">
      <xsl:message terminate="yes">
        <xsl:text>Error: Conversion between 1.0.7 and 1.2.0 requires the math:tan extension.</xsl:text>
      </xsl:message>
    </xsl:if>
    <xsl:apply-templates/>
  </xsl:template>

  <xsl:template match="/from:QEL">
    <QEL xsi:schemaLocation="http://qel.example/ns/qeli/1_2_0/qeli http://qel.example/ns/qeli/1_2_0/qeli.xsd">
      <xsl:apply-templates/>
    </QEL>
  </xsl:template>

  <xsl:template match="from:*">
    <xsl:element name="{local-name()}">
      <xsl:copy-of select="@*"/>
      <xsl:apply-templates/>
    </xsl:element>
  </xsl:template>

  <xsl:template match="from:camera">
    <xsl:message>Updating camera: <xsl:value-of select="@name"/></xsl:message>
    <camera>
      <xsl:copy-of select="@*"/>
      <xsl:if test="from:hzFov or from:vtFov">
        <focalLength>3.5e-2</focalLength>
      </xsl:if>
      <xsl:if test="from:hzFov">
        <horizontalFilmAperture>
          <xsl:value-of select="2.0 * 0.035 * math:tan(0.5 * from:hzFov)"/>
        </horizontalFilmAperture>
      </xsl:if>
      <xsl:if test="from:vtFov">
        <verticalFilmAperture>
          <xsl:value-of select="2.0 * 0.035 * math:tan(0.5 * from:vtFov)"/>
        </verticalFilmAperture>
      </xsl:if>
      <xsl:apply-templates/>
    </camera>
  </xsl:template>

  <xsl:template match="from:camera/from:hzFov|from:camera/from:vtFov"/>
</xsl:stylesheet>
